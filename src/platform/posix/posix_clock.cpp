// The clock of the system: the monotonic clock set to the time of day at its first use, and the local time.
#include <ctime>
#include <thread>

#include "platform/posix/posix_services.h"

namespace zentaro::posix {
namespace {

using std::chrono::duration;
using std::chrono::steady_clock;
using std::chrono::system_clock;

std::tm localParts(std::time_t time) {
  std::tm parts{};
  ::localtime_r(&time, &parts);
  return parts;
}

double timeOfDay() {
  const auto now = system_clock::now();
  const std::tm parts = localParts(system_clock::to_time_t(now));
  const auto whole = std::chrono::floor<std::chrono::seconds>(now);
  return parts.tm_hour * 3600 + parts.tm_min * 60 + parts.tm_sec + duration<double>(now - whole).count();
}

class PosixClock : public Clock {
 public:
  explicit PosixClock(double timeOfDayAtStart = timeOfDay()) : timeOfDayAtStart_(timeOfDayAtStart) {}

  double secondsSinceMidnight() override {
    return timeOfDayAtStart_ + duration<double>(steady_clock::now() - start_).count();
  }

  LocalTime localTime() override {
    const std::tm parts = localParts(std::time(nullptr));
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
  }

  void sleep(std::chrono::milliseconds time) override { std::this_thread::sleep_for(time); }

 private:
  steady_clock::time_point start_ = steady_clock::now();
  double timeOfDayAtStart_;
};

}  // namespace

Clock& clock() { return lasting<PosixClock>(); }

std::unique_ptr<Clock> clockFrom(std::optional<double> start) {
  return start ? std::make_unique<PosixClock>(*start) : std::make_unique<PosixClock>();
}

}  // namespace zentaro::posix
