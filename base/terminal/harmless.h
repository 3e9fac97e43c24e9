// Texts from a line, a file or the command line, made harmless before they reach a terminal.
#pragma once

#include <string>
#include <string_view>

namespace zentaro::terminal {

/// UTF-8 in which control characters (below 0x20, 0x7F, and U+0080 to U+009F) and bytes that are no UTF-8 are
/// written as "\x1B", so that no escape sequence is left. A line break counts as a control character; what stands for
/// a blank of what is whole (layout.h) does not, and becomes one.
std::string harmless(std::string_view text);
/// The same for a text of several lines: line breaks stay.
std::string harmlessLines(std::string_view text);

}  // namespace zentaro::terminal
