// Conversion between UTF-8 and UTF-16. Overlong forms, surrogates in UTF-8 and values above
// U+10FFFF are malformed; what was read of a malformed sequence becomes one U+FFFD, and reading
// goes on at the first byte that does not belong to it.
#include "text/unicode.h"

#include <algorithm>

namespace zentaro {
namespace {

constexpr char32_t replacement = 0xFFFD;

/// What the first byte of a sequence says: its value bits, how many bytes follow, and the range of
/// the second byte, which is where overlong forms, surrogates and values that are too large show.
struct Lead {
  char32_t bits;
  int following;
  unsigned low = 0x80, high = 0xBF;
};

Lead leadOf(unsigned byte) {
  if (byte < 0x80) return {byte, 0};
  if (byte < 0xC2 || byte > 0xF4) return {replacement, 0};
  if (byte < 0xE0) return {byte & 0x1F, 1};
  if (byte < 0xF0) return {byte & 0x0F, 2, byte == 0xE0 ? 0xA0U : 0x80U, byte == 0xED ? 0x9FU : 0xBFU};
  return {byte & 0x07, 3, byte == 0xF0 ? 0x90U : 0x80U, byte == 0xF4 ? 0x8FU : 0xBFU};
}

char32_t takeCharacter(std::string_view& bytes) {
  const auto take = [&bytes] {
    const auto byte = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    return byte;
  };
  auto [character, following, low, high] = leadOf(take());
  for (; following > 0; --following) {
    if (bytes.empty()) return replacement;
    const auto next = static_cast<unsigned char>(bytes.front());
    if (next < low || next > high) return replacement;
    character = (character << 6) | (take() & 0x3FU);
    low = 0x80;
    high = 0xBF;
  }
  return character;
}

char32_t takeCharacter(std::u16string_view& units) {
  const auto isHigh = [](char16_t unit) { return (unit & 0xFC00) == 0xD800; };
  const auto isLow = [](char16_t unit) { return (unit & 0xFC00) == 0xDC00; };
  const char16_t first = units.front();
  units.remove_prefix(1);
  if (!isHigh(first)) return isLow(first) ? replacement : first;
  if (units.empty() || !isLow(units.front())) return replacement;
  const char16_t second = units.front();
  units.remove_prefix(1);
  return 0x10000 + ((first & 0x3FFU) << 10) + (second & 0x3FFU);
}

void append(std::u16string& text, char32_t character) {
  if (character < 0x10000) {
    text += static_cast<char16_t>(character);
    return;
  }
  text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
  text += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
}

void append(std::string& text, char32_t character) {
  constexpr unsigned leads[] = {0x00, 0xC0, 0xE0, 0xF0};
  int following = character < 0x80 ? 0 : character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
  text += static_cast<char>(leads[following] | (character >> (6 * following)));
  while (following-- > 0) text += static_cast<char>(0x80 | ((character >> (6 * following)) & 0x3F));
}

template <class Result, class View>
Result converted(View text) {
  // Most texts are ASCII to their end.
  const auto isAscii = [](auto unit) { return static_cast<unsigned>(unit) < 0x80; };
  Result result(text.begin(), std::find_if_not(text.begin(), text.end(), isAscii));
  text.remove_prefix(result.size());
  while (!text.empty()) append(result, takeCharacter(text));
  return result;
}

}  // namespace

std::u16string utf16(std::string_view utf8) { return converted<std::u16string>(utf8); }

std::string utf8(std::u16string_view utf16) { return converted<std::string>(utf16); }

}  // namespace zentaro
