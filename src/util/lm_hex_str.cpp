// A negative number is written as its 32 bits.
#include "util/lm_hex_str.h"

#include "text/digits.h"
#include "text/unicode.h"

namespace zentaro::lmHexStr {

std::u16string HexDigit(std::int16_t value) {
  if (value >= 10) return std::u16string(1, static_cast<char16_t>(u'A' + value - 10));
  return utf16(std::to_string(value));
}

std::u16string HexStr(std::int32_t value, std::int16_t width) {
  return hexadecimalText(static_cast<std::uint32_t>(value), static_cast<std::size_t>(width > 0 ? width : 0));
}

}  // namespace zentaro::lmHexStr
