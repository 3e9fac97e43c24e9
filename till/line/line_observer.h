// What happens while a line and its printer get back in step, for whoever words it.
#pragma once

#include <chrono>
#include <string>

#include "zentaro_api.h"

namespace zentaro::till {

class ZENTARO_API LineObserver {
 public:
  using Time = std::chrono::milliseconds;

  virtual ~LineObserver() = default;
  /// No answer is in step: the printer is waited for, at most so long.
  virtual void waiting([[maybe_unused]] Time limit) {}
  /// Once every few seconds after that.
  virtual void stillWaiting([[maybe_unused]] Time waited, [[maybe_unused]] Time limit) {}
  /// The object's trace could not be written, and is off.
  virtual void traceEnded([[maybe_unused]] const std::string& why) {}
};

}  // namespace zentaro::till
