// The system's clocks.
#include "virtual-printer/shell/clock.h"

#include <ctime>

namespace printer {

std::chrono::milliseconds Clock::steady() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin_);
}

Moment Clock::now() const {
  if (fixed_) return {steady(), *fixed_};
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  return {steady(), LocalTime{std::chrono::seconds{now + local.tm_gmtoff}}};
}

}  // namespace printer
