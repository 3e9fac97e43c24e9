// What one command prints. It is kept back until the change of the books is safe: a command that is refused
// at the last moment, because its change cannot be saved, must not stand on paper.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "virtual-printer/paper/roll.h"

namespace virtual_printer {

class PrintJob {
 public:
  void print(Lines lines) {
    steps_.push_back([lines = std::move(lines)](Roll& roll) { roll.print(lines); });
  }
  void cut(std::string title) {
    steps_.push_back([title = std::move(title)](Roll& roll) { roll.cut(title); });
  }
  void printApart(Sheet sheet) {
    steps_.push_back([sheet = std::move(sheet)](Roll& roll) { roll.printApart(sheet); });
  }

  void runOn(Roll& roll) {
    for (const auto& step : std::exchange(steps_, {})) step(roll);
  }
  void drop() { steps_.clear(); }

 private:
  std::vector<std::function<void(Roll&)>> steps_;
};

}  // namespace virtual_printer
