// Colours on a terminal; none where nobody sees them.
#pragma once

#include <string>
#include <string_view>

namespace zentaro::terminal {

enum class Colour { None, Strong, Faint, Red, Green, Cyan };

/// The text in that colour when standard output is a terminal; as it is otherwise, with NO_COLOR, and on a
/// terminal that calls itself dumb.
std::string coloured(Colour colour, std::string_view text);

}  // namespace zentaro::terminal
