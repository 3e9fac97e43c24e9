// What doctor finds, for people and for programs.
#pragma once

#include <string>
#include <vector>

#include "base/files/json_fwd.h"

namespace zentaro::tools {

struct Finding {
  std::string code;  // "device-missing": what programs go by; the same in both languages
  bool isProblem = false;
  std::string text;         // what is the case
  std::string advice = {};  // what to do about it, a line each; empty when there is nothing to do
};

/// Findings in the order in which they were made, each about a subject such as "COM1 /dev/ttyUSB0".
class Findings {
 public:
  void add(const std::string& subject, const Finding& finding);
  int problems() const;

  /// One line each, a problem marked with "!", its advice below it.
  std::string text() const;
  Json json() const;

 private:
  struct Row {
    std::string subject;
    Finding finding;
  };
  std::vector<Row> rows_;
};

}  // namespace zentaro::tools
