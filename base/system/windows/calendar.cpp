// The calendar of Windows.
#include "base/system/calendar.h"

namespace zentaro::system {

std::tm localParts(std::int64_t moment) {
  const __time64_t time = moment;
  std::tm parts{};
  ::_localtime64_s(&parts, &time);
  return parts;
}

std::tm utcParts(std::int64_t moment) {
  const __time64_t time = moment;
  std::tm parts{};
  ::_gmtime64_s(&parts, &time);
  return parts;
}

}  // namespace zentaro::system
