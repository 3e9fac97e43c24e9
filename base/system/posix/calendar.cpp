// The calendar of a POSIX system.
#include "base/system/calendar.h"

namespace zentaro::system {

std::tm localParts(std::int64_t moment) {
  const std::time_t time = moment;
  std::tm parts{};
  ::localtime_r(&time, &parts);
  return parts;
}

std::tm utcParts(std::int64_t moment) {
  const std::time_t time = moment;
  std::tm parts{};
  ::gmtime_r(&time, &parts);
  return parts;
}

}  // namespace zentaro::system
