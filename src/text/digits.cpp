// Digits one by one, from the right.
#include "text/digits.h"

#include <algorithm>

namespace zentaro {
namespace {

std::u16string digitsOf(std::uint32_t value, std::uint32_t base) {
  constexpr char16_t digits[] = u"0123456789ABCDEF";
  std::u16string text;
  do {
    text += digits[value % base];
    value /= base;
  } while (value != 0);
  std::reverse(text.begin(), text.end());
  return text;
}

}  // namespace

std::u16string zeroPadded(std::u16string digits, std::size_t width) {
  if (digits.size() < width) digits.insert(0, width - digits.size(), u'0');
  return digits;
}

std::u16string decimalText(int value, std::size_t width) {
  return zeroPadded(digitsOf(static_cast<std::uint32_t>(value), 10), width);
}

std::u16string hexadecimalText(std::uint32_t value, std::size_t width) {
  return zeroPadded(digitsOf(value, 16), width);
}

std::u16string clockText(int hour, int minute, int second) {
  return decimalText(hour, 2) + u":" + decimalText(minute, 2) + u":" + decimalText(second, 2);
}

}  // namespace zentaro
