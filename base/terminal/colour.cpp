// Escape sequences.
#include "base/terminal/colour.h"

#include <array>
#include <cstdlib>

#include "base/terminal/console.h"

namespace zentaro::terminal {

namespace {

bool isColourful() {
  const char* refused = std::getenv("NO_COLOR");
  return (refused == nullptr || *refused == '\0') && hasColours();
}

}  // namespace

std::string coloured(Colour colour, std::string_view text) {
  static const bool hasColours = isColourful();
  constexpr std::array<std::string_view, 6> codes{"", "1", "2", "31", "32", "36"};
  if (!hasColours || colour == Colour::None || text.empty()) return std::string(text);
  return "\x1B[" + std::string(codes[static_cast<std::size_t>(colour)]) + "m" + std::string(text) + "\x1B[0m";
}

}  // namespace zentaro::terminal
