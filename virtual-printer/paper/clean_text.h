// Texts as paper can show them, whatever the command line or the state file hold.
#pragma once

#include <string>
#include <string_view>

namespace virtual_printer {

/// UTF-8, with a point for every byte that is none and for every character that a terminal acts on
/// or that XML forbids.
std::string cleanText(std::string_view text);

}  // namespace virtual_printer
