// The line as the page lists it: a row for each command, each answer as it went out, and whatever
// else happened.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "virtual-printer/line/engine.h"
#include "virtual-printer/web/feed.h"

namespace virtual_printer {

class LineRows {
 public:
  explicit LineRows(Feed& feed) : feed_{feed} {}

  void happened(const Moment& moment, const Event& event);
  /// Bytes have gone out to the host.
  void sent(const Moment& moment, const Output& output);

 private:
  struct Row {
    int number = 0;  // 0: not listed
    Moment moment;
    Event event;
    std::string bytes;
  };
  struct Exchange {
    Row command, answer;  // the answer's row is listed with its first byte
    std::vector<std::string> faults;
    bool hasAnswer = false;  // whether the printer gave one, be it lost afterwards
  };

  void list(Row& row, const Moment& moment);
  void show(const Row& row, const char* way, const Exchange* exchange);

  Feed& feed_;
  int lastRow_ = 0;
  std::map<int, Exchange> exchanges_;  // the latest ones
};

}  // namespace virtual_printer
