// One pass over the text, a character at a time.
#include "base/terminal/harmless.h"

#include <cstdint>

#include "base/terminal/layout.h"

namespace zentaro::terminal {

namespace {

// The bytes of the character that begins the text; 1 for a byte that begins none.
std::size_t lengthOfFirst(std::string_view text) {
  const auto byteAt = [&](std::size_t index) { return static_cast<std::uint8_t>(text[index]); };
  const std::uint8_t lead = byteAt(0);
  const std::size_t length = lead >= 0xF0 && lead <= 0xF4 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 1;
  if (lead > 0xF4 || length > text.size()) return 1;
  for (std::size_t index = 1; index < length; ++index) {
    if ((byteAt(index) & 0xC0) != 0x80) return 1;
  }
  return length;
}

bool isHarmful(std::string_view character) {
  const auto first = static_cast<std::uint8_t>(character[0]);
  if (character.size() == 1) return (first < 0x20 && character[0] != wholeBlank) || first >= 0x7F;
  // U+0080 to U+009F: a terminal takes them as the two bytes of an escape sequence.
  return character.size() == 2 && first == 0xC2 && static_cast<std::uint8_t>(character[1]) < 0xA0;
}

void appendEscaped(std::string& text, std::string_view character) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  const auto code = static_cast<std::uint8_t>(character.back());  // U+009B is the byte 0x9B behind its lead
  text.append("\\x").append(1, digits[code >> 4]).append(1, digits[code & 0xF]);
}

std::string cleaned(std::string_view text, bool keepsLineBreaks) {
  std::string clean;
  clean.reserve(text.size());
  while (!text.empty()) {
    const std::string_view character = text.substr(0, lengthOfFirst(text));
    if (isHarmful(character) && !(keepsLineBreaks && character == "\n")) {
      appendEscaped(clean, character);
    } else {
      clean.append(character);
    }
    text.remove_prefix(character.size());
  }
  return clean;
}

}  // namespace

std::string harmless(std::string_view text) { return cleaned(text, false); }
std::string harmlessLines(std::string_view text) { return cleaned(text, true); }

}  // namespace zentaro::terminal
