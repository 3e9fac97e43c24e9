// Decimal numbers from and to text.
#include "till/document/decimal.h"

#include <algorithm>
#include <charconv>

#include "base/terminal/language.h"

namespace zentaro::till {

using terminal::say;

namespace {

constexpr std::size_t mostDigits = 15;  // with room to spare in 64 bits

bool areDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string_view withoutZerosBehind(std::string_view text) {
  const std::size_t last = text.find_last_not_of('0');
  return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

std::string formProblem(std::string_view text) {
  if (text.empty())
    return say("está vacío; escriba un número como 12.50", "is empty; write a number such as 12.50");
  if (text.front() == '-') return say("no puede ser negativo", "must not be negative");
  if (text.find(',') != std::string_view::npos)
    return say("tiene una coma; escriba los decimales tras un punto: 12.50",
               "has a comma; write the decimals behind a point: 12.50");
  if (text.find_first_of("eE") != std::string_view::npos)
    return say("tiene un exponente; escriba todas las cifras", "has an exponent; write all digits");
  return say("no es un número; escriba cifras y un punto a lo sumo, como 12.50",
             "is no number; write digits and at most one point, such as 12.50");
}

}  // namespace

DecimalReading readDecimal(std::string_view text, int decimals) {
  const std::size_t point = text.find('.');
  const std::string_view whole = text.substr(0, point);
  const std::string_view behind =
      point == std::string_view::npos ? std::string_view{} : text.substr(point + 1);
  const bool endsWithPoint = point != std::string_view::npos && behind.empty();
  if (whole.empty() || endsWithPoint || !areDigits(whole) || !areDigits(behind))
    return {0, formProblem(text)};

  const std::string_view fraction = withoutZerosBehind(behind);
  const auto places = static_cast<std::size_t>(decimals);
  if (fraction.size() > places)
    return {0, say("tiene más de {} decimales; redondéelo en su programa",
                   "has more than {} decimals; round it in your program", {std::to_string(decimals)})};
  std::string digits = std::string(whole.substr(std::min(whole.find_first_not_of('0'), whole.size()))) +
                       std::string(fraction) + std::string(places - fraction.size(), '0');
  if (digits.size() > mostDigits) return {0, say("es demasiado grande", "is too large")};
  DecimalReading reading;
  std::from_chars(digits.data(), digits.data() + digits.size(), reading.value);
  return reading;
}

// By the binary digits of b, since not every processor counts in 128 bits; the rest stays below the divisor.
Quotient multiplyDivide(std::int64_t a, std::int64_t b, std::int64_t c) {
  const auto factor = static_cast<std::uint64_t>(a), digits = static_cast<std::uint64_t>(b),
             divisor = static_cast<std::uint64_t>(c);
  std::uint64_t whole = 0, rest = 0;
  const auto add = [&](std::uint64_t wholes, std::uint64_t rests) {
    rest += rests;
    whole += wholes + rest / divisor;
    rest %= divisor;
  };
  for (int digit = 62; digit >= 0; --digit) {
    add(whole, rest);
    if ((digits >> digit & 1) != 0) add(factor / divisor, factor % divisor);
  }
  return {static_cast<std::int64_t>(whole), static_cast<std::int64_t>(rest)};
}

std::int64_t roundedHalfUp(std::int64_t a, std::int64_t b, std::int64_t c) {
  const auto [whole, remainder] = multiplyDivide(a, b, c);
  return remainder * 2 >= c ? whole + 1 : whole;
}

std::string decimalText(std::int64_t value, int decimals) {
  std::string digits = std::to_string(value < 0 ? -value : value);
  const auto places = static_cast<std::size_t>(decimals);
  if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), '0');
  digits.insert(digits.size() - places, ".");
  return value < 0 ? "-" + digits : digits;
}

std::string shortDecimalText(std::int64_t value, int decimals) {
  const std::string text = decimalText(value, decimals);
  const std::string_view kept = withoutZerosBehind(text);
  return std::string(kept.ends_with('.') ? kept.substr(0, kept.size() - 1) : kept);
}

}  // namespace zentaro::till
