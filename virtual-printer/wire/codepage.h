// The host's bytes are Windows-1252; inside the printer, on paper and in files text is UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace virtual_printer {

/// Control characters and unassigned bytes become "." so that they cannot disturb paper or files.
std::string utf8FromWire(std::string_view bytes);

}  // namespace virtual_printer
