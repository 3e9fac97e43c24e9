// Seconds since 1970 as day and time, safe on every thread.
#pragma once

#include <cstdint>
#include <ctime>

namespace zentaro::system {

std::tm localParts(std::int64_t moment);
std::tm utcParts(std::int64_t moment);

}  // namespace zentaro::system
