// The clock of the system: the monotonic clock set to the time of day at its first use, and the local time.
#include "platform/windows/system.h"
#include "platform/windows/windows_services.h"

namespace zentaro::windows {
namespace {

using std::chrono::duration;
using std::chrono::steady_clock;

class WindowsClock : public Clock {
 public:
  double secondsSinceMidnight() override {
    return timeOfDayAtStart_ + duration<double>(steady_clock::now() - start_).count();
  }

  LocalTime localTime() override {
    const SYSTEMTIME now = systemTime();
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
  }

  void sleep(std::chrono::milliseconds time) override { ::Sleep(static_cast<DWORD>(time.count())); }

 private:
  static SYSTEMTIME systemTime() {
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    return now;
  }
  static double timeOfDay() {
    const SYSTEMTIME now = systemTime();
    return now.wHour * 3600 + now.wMinute * 60 + now.wSecond + now.wMilliseconds / 1000.0;
  }

  steady_clock::time_point start_ = steady_clock::now();
  double timeOfDayAtStart_ = timeOfDay();
};

}  // namespace

Clock& clock() { return lasting<WindowsClock>(); }

}  // namespace zentaro::windows
