// Escape sequences.
#include "base/terminal/colour.h"

#include <unistd.h>

#include <array>
#include <cstdlib>

namespace zentaro::terminal {

namespace {

bool isColourful() {
  const char *refused = std::getenv("NO_COLOR"), *terminal = std::getenv("TERM");
  if (refused != nullptr && *refused != '\0') return false;
  return terminal != nullptr && std::string_view(terminal) != "dumb" && ::isatty(STDOUT_FILENO) != 0;
}

}  // namespace

std::string coloured(Colour colour, std::string_view text) {
  static const bool hasColours = isColourful();
  constexpr std::array<std::string_view, 6> codes{"", "1", "2", "31", "32", "36"};
  if (!hasColours || colour == Colour::None || text.empty()) return std::string(text);
  return "\x1B[" + std::string(codes[static_cast<std::size_t>(colour)]) + "m" + std::string(text) + "\x1B[0m";
}

}  // namespace zentaro::terminal
