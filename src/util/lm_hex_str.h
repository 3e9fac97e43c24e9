// Numbers as upper-case hexadecimal text.
#pragma once

#include <cstdint>
#include <string>

namespace zentaro::lmHexStr {

/// The digit for 0 to 15.
std::u16string HexDigit(std::int16_t value);

/// At least `width` digits, never cut. A negative value is its 32-bit two's complement, eight digits.
std::u16string HexStr(std::int32_t value, std::int16_t width);

}  // namespace zentaro::lmHexStr
