// UTF-8 at the edges, UTF-16 inside.
#pragma once

#include <string>
#include <string_view>

#include "zentaro_api.h"

namespace zentaro {

/// Malformed input becomes U+FFFD; nothing is raised.
ZENTARO_API std::u16string utf16(std::string_view utf8);
/// A lone surrogate becomes U+FFFD.
ZENTARO_API std::string utf8(std::u16string_view utf16);

}  // namespace zentaro
