// The kernel's own name for a start, and its clock that goes on in sleep.
#include "base/system/uptime.h"

#include <ctime>
#include <fstream>

namespace zentaro::system {

Uptime uptime() {
  Uptime result;
  std::ifstream("/proc/sys/kernel/random/boot_id") >> result.boot;
  timespec now{};
  ::clock_gettime(CLOCK_BOOTTIME, &now);
  result.seconds = now.tv_sec;
  return result;
}

}  // namespace zentaro::system
