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

/// The moment of the start, to the minute: the two clocks behind it are read one after the other.
std::string momentOfStart(std::uint64_t milliseconds) {
  FILETIME now;
  ::GetSystemTimeAsFileTime(&now);
  const std::uint64_t ticks = (std::uint64_t{now.dwHighDateTime} << 32) | now.dwLowDateTime;
  constexpr std::uint64_t ticksOfMillisecond = 10'000, millisecondsOfMinute = 60'000;
  return std::to_string((ticks / ticksOfMillisecond - milliseconds) / millisecondsOfMinute);
}

}  // namespace

Uptime uptime() {
  static const std::string boot = numberOfStart() + "-" + momentOfStart(::GetTickCount64());
  return {boot, static_cast<std::int64_t>(::GetTickCount64() / 1000)};
}

}  // namespace zentaro::system
