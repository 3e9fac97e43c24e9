// Currency from and to doubles, decimal digits and texts.
#include "automation/currency.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "automation/automation_error.h"
#include "text/ascii.h"
#include "text/unicode.h"

namespace zentaro {
namespace {

constexpr int currencyDecimals = 4;
constexpr double scale = 10'000;

/// `digits` may carry a minus sign.
std::int64_t wholeNumber(std::string_view digits) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error == std::errc::result_out_of_range) throw AutomationError(ErrorNumber::Overflow);
  return number;
}

}  // namespace

Currency Currency::fromDouble(double value) {
  constexpr double limit = 9'223'372'036'854'775'808.0;  // two to the power of 63
  const double scaled = std::nearbyint(value * scale);
  if (!(scaled >= -limit && scaled < limit)) throw AutomationError(ErrorNumber::Overflow);
  return fromScaled(static_cast<std::int64_t>(scaled));
}

Currency Currency::fromDecimal(const DecimalDigits& value) {
  constexpr int tooLarge = 20;
  if (value.exponent > tooLarge) throw AutomationError(ErrorNumber::Overflow);
  const std::string digits = scaledDigits(value, currencyDecimals, Ties::ToEven);
  return fromScaled(wholeNumber(value.negative ? "-" + digits : digits));
}

Currency operator*(Currency left, Currency right) {
  constexpr std::int64_t one = 10'000;
  // By the whole part and the ten-thousandths of both, so that nothing but the sum can be too large.
  const std::int64_t whole = left.scaled_ / one, part = left.scaled_ % one;
  const std::int64_t rest = part * (right.scaled_ % one);
  std::int64_t product = 0, partial = 0;
  if (__builtin_mul_overflow(left.scaled_, right.scaled_ / one, &product) ||
      __builtin_mul_overflow(whole, right.scaled_ % one, &partial) ||
      __builtin_add_overflow(product, partial, &product) ||
      __builtin_add_overflow(product, rest / one, &product)) {
    throw AutomationError(ErrorNumber::Overflow);
  }
  const std::int64_t dropped = std::abs(rest % one) * 2;
  const bool isRounded = dropped > one || (dropped == one && product % 2 != 0);
  if (isRounded && __builtin_add_overflow(product, rest < 0 ? -1 : 1, &product)) {
    throw AutomationError(ErrorNumber::Overflow);
  }
  return Currency::fromScaled(product);
}

double Currency::toDouble() const { return static_cast<double>(scaled_) / scale; }

DecimalDigits Currency::toDecimal() const {
  std::string digits = std::to_string(scaled_);
  if (scaled_ < 0) digits.erase(0, 1);
  const int exponent = static_cast<int>(digits.size()) - currencyDecimals;
  return decimalDigits(scaled_ < 0, std::move(digits), exponent);
}

std::u16string currencyText(Currency value, char16_t decimalSeparator) {
  std::u16string text = utf16(currencyText4(value));
  text.erase(text.find_last_not_of(u'0') + 1);
  const auto point = text.find(u'.');
  if (point + 1 == text.size()) return text.substr(0, point);
  text[point] = decimalSeparator;
  return text;
}

std::string currencyText4(Currency value) {
  const FixedDigits digits = fixedDigits(value.toDecimal(), currencyDecimals);
  return (digits.negative ? "-" : "") + digits.integer + "." + digits.fraction;
}

Currency currencyFromText4(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  const auto point = std::min(text.find('.'), text.size());
  const std::string_view integer = text.substr(0, point);
  const std::string_view fraction = text.substr(std::min(point + 1, text.size()));
  const bool hasPoint = point < text.size();
  const bool isWrong =
      integer.empty() || hasPoint == fraction.empty() || fraction.size() > currencyDecimals ||
      !std::ranges::all_of(integer, isAsciiDigit<char>) || !std::ranges::all_of(fraction, isAsciiDigit<char>);
  if (isWrong) throw AutomationError(ErrorNumber::TypeMismatch);
  std::string digits = isNegative ? "-" : "";
  digits.append(integer).append(fraction).append(currencyDecimals - fraction.size(), '0');
  return Currency::fromScaled(wholeNumber(digits));
}

}  // namespace zentaro
