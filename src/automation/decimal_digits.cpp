// Decimal digits from doubles and back, and their rounding, digit by digit as on paper.
#include "automation/decimal_digits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>
#include <utility>

namespace zentaro {
namespace {

constexpr int significantDigits = 15;
// Beyond these powers of ten a double is infinite or zero whatever the digits are.
constexpr int largestExponent = 310, smallestExponent = -330;

bool roundsUp(std::string_view kept, std::string_view dropped, Ties ties) {
  if (dropped.empty() || dropped.front() < '5') return false;
  const bool isTie = dropped == "5" && ties == Ties::ToEven;
  return !isTie || (!kept.empty() && (kept.back() - '0') % 2 == 1);
}

void increment(std::string& digits) {
  auto digit = digits.rbegin();
  for (; digit != digits.rend() && *digit == '9'; ++digit) *digit = '0';
  if (digit == digits.rend()) {
    digits.insert(digits.begin(), '1');
  } else {
    ++*digit;
  }
}

/// `form` is what to_chars is told: the scientific notation, and perhaps how many decimals.
template <class Float, class... Form>
DecimalDigits digitsOf(Float value, Form... form) {
  std::array<char, 32> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value), form...);
  // "d.dddddde[+-]xx", and "de[+-]xx" for a single digit
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data()));
  const auto mark = text.find('e');
  int power = 0;
  std::from_chars(text.data() + mark + 2, text.data() + text.size(), power);
  if (text[mark + 1] == '-') power = -power;
  std::string digits(text.substr(0, mark));
  std::erase(digits, '.');
  return decimalDigits(std::signbit(value), std::move(digits), power + 1);
}

}  // namespace

DecimalDigits decimalDigits(double value) {
  return digitsOf(value, std::chars_format::scientific, significantDigits - 1);
}

DecimalDigits ownDigits(double value) { return digitsOf(value, std::chars_format::scientific); }
DecimalDigits ownDigits(float value) { return digitsOf(value, std::chars_format::scientific); }

DecimalDigits decimalDigits(bool negative, std::string digits, int exponent) {
  const auto first = std::min(digits.find_first_not_of('0'), digits.size());
  digits.erase(0, first);
  digits.erase(digits.find_last_not_of('0') + 1);
  if (digits.empty()) return {};
  return {negative, std::move(digits), exponent - static_cast<int>(first)};
}

double decimalValue(const DecimalDigits& value) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  double result = 0;
  if (!value.digits.empty() && value.exponent > smallestExponent) {
    const std::string text =
        "0." + value.digits + "e" + std::to_string(std::min(value.exponent, largestExponent));
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    if (error == std::errc::result_out_of_range) result = value.exponent > 0 ? infinity : 0;
  }
  return value.negative ? -result : result;
}

std::string scaledDigits(const DecimalDigits& value, int decimals, Ties ties) {
  const int count = value.exponent + decimals;
  if (count < 0 || value.digits.empty()) return {};
  const auto keep = static_cast<std::size_t>(count);
  std::string kept = value.digits.substr(0, keep);
  const std::string_view dropped = std::string_view(value.digits).substr(kept.size());
  if (roundsUp(kept, dropped, ties)) {
    increment(kept);
  } else {
    kept.resize(std::max(kept.size(), keep), '0');
  }
  return kept;
}

FixedDigits fixedDigits(const DecimalDigits& value, int decimals) {
  const auto places = static_cast<std::size_t>(decimals);
  std::string digits = scaledDigits(value, decimals, Ties::AwayFromZero);
  if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), '0');
  const bool isZero = digits.find_first_not_of('0') == digits.npos;
  const auto split = digits.size() - places;
  return {value.negative && !isZero, digits.substr(0, split), digits.substr(split)};
}

}  // namespace zentaro
