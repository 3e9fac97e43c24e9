// Checking of UTF-8, a character at a time.
#include "virtual-printer/paper/clean_text.h"

#include <algorithm>

namespace virtual_printer {
namespace {

// The code point that begins the text, and its bytes; no bytes when there is none.
struct Character {
  char32_t point = 0;
  std::size_t bytes = 0;
};

Character firstOf(std::string_view text) {
  const auto byteAt = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned lead = byteAt(0);
  if (lead < 0x80) return {lead, 1};
  const std::size_t bytes = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < bytes) return {};
  char32_t point = lead & (0xFFU >> (bytes + 1));
  for (std::size_t at = 1; at < bytes; ++at) {
    if ((byteAt(at) & 0xC0U) != 0x80U) return {};
    point = point << 6 | (byteAt(at) & 0x3FU);
  }
  constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};  // longer than needed is no UTF-8
  return point < least[bytes] ? Character{} : Character{point, bytes};
}

bool isPrintable(char32_t point) {
  const bool isControl = point < 0x20 || (point >= 0x7F && point < 0xA0);
  const bool isSurrogate = point >= 0xD800 && point < 0xE000;
  return !isControl && !isSurrogate && point != 0xFFFE && point != 0xFFFF && point < 0x110000;
}

}  // namespace

std::string cleanText(std::string_view text) {
  if (std::ranges::all_of(text, [](char byte) { return byte >= ' ' && byte <= '~'; }))
    return std::string{text};
  std::string clean;
  while (!text.empty()) {
    const Character first = firstOf(text);
    if (first.bytes > 0 && isPrintable(first.point))
      clean += text.substr(0, first.bytes);
    else
      clean += '.';
    text.remove_prefix(std::max<std::size_t>(first.bytes, 1));
  }
  return clean;
}

}  // namespace virtual_printer
