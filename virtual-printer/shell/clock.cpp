// The system's clocks.
#include "virtual-printer/shell/clock.h"

#include <ctime>

#include "virtual-printer/fiscal/calendar.h"

namespace virtual_printer {

std::chrono::milliseconds Clock::steady() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin_);
}

Moment Clock::now() const {
  if (fixed_) return {steady(), *fixed_};
  const std::time_t now = std::time(nullptr);
  return {steady(), fromFields(*std::localtime(&now))};
}

}  // namespace virtual_printer
