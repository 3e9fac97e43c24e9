// Rounding to whole numbers, numbers at the beginning of a text, and numbers as text.
#include "automation/numbers.h"

#include <cmath>
#include <limits>
#include <utility>

#include "automation/automation_error.h"
#include "text/digits.h"
#include "text/unicode.h"

namespace zentaro {
namespace {

template <class Whole>
Whole rounded(double value) {
  const double whole = std::nearbyint(value);
  // Written so that NaN fails too.
  if (!(whole >= std::numeric_limits<Whole>::min() && whole <= std::numeric_limits<Whole>::max())) {
    throw AutomationError(ErrorNumber::Overflow);
  }
  return static_cast<Whole>(whole);
}

bool isIgnored(char16_t character) { return isBlank(character) || character == u'\n'; }

std::u16string withoutIgnored(std::u16string_view text) {
  std::u16string kept(text);
  std::erase_if(kept, isIgnored);
  return kept;
}

std::u16string fixedText(const DecimalDigits& number, char16_t decimalSeparator) {
  std::string integer = number.digits, fraction;
  if (number.exponent <= 0) {
    fraction = std::string(static_cast<std::size_t>(-number.exponent), '0') + number.digits;
    integer.assign(1, '0');
  } else {
    integer.resize(std::max(integer.size(), static_cast<std::size_t>(number.exponent)), '0');
    fraction = integer.substr(static_cast<std::size_t>(number.exponent));
    integer.resize(static_cast<std::size_t>(number.exponent));
  }
  return fraction.empty() ? utf16(integer) : utf16(integer) + decimalSeparator + utf16(fraction);
}

std::u16string scientificText(const DecimalDigits& number, char16_t decimalSeparator) {
  std::u16string text = utf16(number.digits);
  if (text.size() > 1) text.insert(1, 1, decimalSeparator);
  const int power = number.exponent - 1;
  return text.append(power < 0 ? u"E-" : u"E+").append(decimalText(std::abs(power), 2));
}

bool isShownFixed(const DecimalDigits& number) {
  constexpr int mostDigits = 15;
  if (number.exponent > 0) return number.exponent <= mostDigits;
  return static_cast<int>(number.digits.size()) - number.exponent <= mostDigits;
}

template <class Float>
std::u16string textOf(Float value, DecimalDigits (*digitsOf)(Float), char16_t decimalSeparator) {
  if (std::isnan(value)) return u"1.#QNAN";
  if (std::isinf(value)) return value < 0 ? u"-1.#INF" : u"1.#INF";
  const DecimalDigits number = digitsOf(value);
  if (number.digits.empty()) return u"0";
  const std::u16string text =
      isShownFixed(number) ? fixedText(number, decimalSeparator) : scientificText(number, decimalSeparator);
  return number.negative ? u"-" + text : text;
}

}  // namespace

std::int16_t roundToInt16(double value) { return rounded<std::int16_t>(value); }
std::int32_t roundToInt32(double value) { return rounded<std::int32_t>(value); }

double leadingNumber(std::u16string_view text) { return decimalValue(leadingDecimal(text)); }

DecimalDigits leadingDecimal(std::u16string_view text) {
  const std::u16string kept = withoutIgnored(text);
  std::u16string_view rest = kept;
  const bool isNegative = rest.starts_with(u'-');
  if (isNegative || rest.starts_with(u'+')) rest.remove_prefix(1);
  std::string digits;
  std::optional<std::size_t> point;
  for (const char16_t character : rest) {
    if (isAsciiDigit(character)) {
      digits += static_cast<char>(character);
    } else if (character == u'.' && !point) {
      point = digits.size();
    } else {
      break;
    }
  }
  const auto exponent = static_cast<int>(point.value_or(digits.size()));
  return decimalDigits(isNegative, std::move(digits), exponent);
}

std::uint32_t leadingHex(std::u16string_view text) {
  std::uint32_t value = 0;
  for (const char16_t character : text) {
    const int digit = hexValue(character);
    if (digit < 0) break;
    value = (value << 4) | static_cast<std::uint32_t>(digit);
  }
  return value;
}

std::int32_t leadingSignedHex(std::u16string_view text) {
  std::u16string kept = withoutIgnored(text);
  kept.erase(0, kept.find_first_not_of(u'0'));
  const auto end = std::ranges::find_if(kept, [](char16_t character) { return hexValue(character) < 0; });
  const auto count = end - kept.begin();
  if (count > 8) throw AutomationError(ErrorNumber::Overflow);
  const std::uint32_t value = leadingHex(kept);
  return count <= 4 ? static_cast<std::int16_t>(value) : static_cast<std::int32_t>(value);
}

std::u16string numberText(double value, char16_t decimalSeparator) {
  return textOf(value, decimalDigits, decimalSeparator);
}

std::u16string numberText(float value, char16_t decimalSeparator) {
  return textOf(value, ownDigits, decimalSeparator);
}

}  // namespace zentaro
