// Time as the library needs it: the deadline clock, the local time of a trace line, and a blocking sleep.
#pragma once

#include <chrono>

namespace zentaro {

struct LocalTime {
  int year, month, day, hour, minute, second;  // month and day from 1
};

class Clock {
 public:
  virtual ~Clock() = default;
  /// The time of day at the start of the program plus the monotonic time since, in seconds: it
  /// never jumps and goes on past 86,400, so midnight and changes of the clock do not matter.
  virtual double secondsSinceMidnight() = 0;
  virtual LocalTime localTime() = 0;
  virtual void sleep(std::chrono::milliseconds time) = 0;
};

}  // namespace zentaro
