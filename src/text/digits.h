// Numbers as digits of a wanted width, and the digits of a hexadecimal number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "text/ascii.h"

namespace zentaro {

/// `digits` with zeros in front up to `width`; never cut.
std::u16string zeroPadded(std::u16string digits, std::size_t width);
/// A number that is not negative.
std::u16string decimalText(int value, std::size_t width = 1);
/// Upper case.
std::u16string hexadecimalText(std::uint32_t value, std::size_t width = 1);
/// The time of day by the 24-hour clock: "14:05:09".
std::u16string clockText(int hour, int minute, int second);

/// What a hexadecimal digit in either case stands for; -1 for any other character.
template <class Character>
constexpr int hexValue(Character character) {
  const Character lower = asciiLower(character);
  if (isAsciiDigit(lower)) return lower - '0';
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

}  // namespace zentaro
