// The count of milliseconds since the start, which goes on in sleep, and the number that the system gives each start.
#include "base/system/uptime.h"

#include <windows.h>

namespace zentaro::system {

namespace {

/// Counted by the system's memory management; 0 where it is not.
std::string numberOfStart() {
  DWORD number = 0, size = sizeof number;
  ::RegGetValueW(HKEY_LOCAL_MACHINE,
                 LR"(SYSTEM\CurrentControlSet\Control\Session Manager\Memory Management\PrefetchParameters)",
                 L"BootId", RRF_RT_REG_DWORD, nullptr, &number, &size);
  return std::to_string(number);
}

}  // namespace

Uptime uptime() { return {numberOfStart(), static_cast<std::int64_t>(::GetTickCount64() / 1000)}; }

}  // namespace zentaro::system
