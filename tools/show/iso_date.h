// Dates as the commands read them; they are written by isoText of the library.
#pragma once

#include <optional>
#include <string_view>

#include "automation/date.h"

namespace zentaro::tools {

/// "2024-03-15" or "2024-03-15T14:05:00", of the years 100 to 9999; nothing for any other text.
std::optional<Date> dateFromIso(std::string_view text);

}  // namespace zentaro::tools
