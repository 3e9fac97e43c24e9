// Hexadecimal text, digit by digit from the right.
#include "util/lm_hex_str.h"

#include "platform/unicode.h"

namespace zentaro::lmHexStr {

std::u16string HexDigit(std::int16_t value) {
  if (value >= 10) return std::u16string(1, static_cast<char16_t>(u'A' + value - 10));
  return utf16(std::to_string(value));
}

std::u16string HexStr(std::int32_t value, std::int16_t width) {
  auto rest = static_cast<std::uint32_t>(value);
  std::u16string text;
  do {
    text.insert(0, HexDigit(static_cast<std::int16_t>(rest % 16)));
    rest /= 16;
  } while (rest != 0);
  const auto wanted = static_cast<std::size_t>(width > 0 ? width : 0);
  if (text.size() < wanted) text.insert(0, wanted - text.size(), u'0');
  return text;
}

}  // namespace zentaro::lmHexStr
