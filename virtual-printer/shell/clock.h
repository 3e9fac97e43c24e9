// Where the running printer gets its time from.
#pragma once

#include <optional>

#include "virtual-printer/line/event.h"

namespace virtual_printer {

class Clock {
 public:
  /// A fixed local time never moves, so that the same commands print the same paper to the byte.
  explicit Clock(std::optional<LocalTime> fixed) : fixed_{fixed} {}

  Moment now() const;
  std::chrono::milliseconds steady() const;

 private:
  std::optional<LocalTime> fixed_;
  std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

}  // namespace virtual_printer
