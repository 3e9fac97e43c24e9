// Regional settings from the locale that the environment names; the program's own locale is never touched.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/regional_settings.h"

namespace zentaro::posix {

/// The short date of a date format such as "%d/%m/%y": "dd/mm/yy". Nothing when the format is not
/// made of one day, one month and one year in digits with separators between them.
std::optional<std::u16string> shortDatePattern(std::u16string_view format);

/// As the environment is now. What an unknown locale or the C locale does not say keeps its default.
Regional regionalOfEnvironment();

}  // namespace zentaro::posix
