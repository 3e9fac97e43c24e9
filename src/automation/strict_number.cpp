// Reads a text that must be a number as a whole.
//
//   decimal:  [sign] digits [group three digits]... [separator [digits]] [E|D [sign] digits]
//   other:    &H hexadecimal digits, &O octal digits
#include <algorithm>
#include <charconv>
#include <utility>

#include "automation/numbers.h"
#include "text/ascii.h"
#include "text/trimming.h"
#include "text/unicode.h"

namespace zentaro {
namespace {

// Larger exponents make no difference to any number that fits into memory.
constexpr int exponentLimit = 1'000'000;

class NumberReader {
 public:
  explicit NumberReader(std::u16string_view text) : rest_(text) {}

  bool atEnd() const { return rest_.empty(); }
  bool atDigit() const { return !rest_.empty() && isAsciiDigit(rest_.front()); }
  bool take(char16_t wanted) {
    const bool isThere = !rest_.empty() && asciiLower(rest_.front()) == asciiLower(wanted);
    if (isThere) rest_.remove_prefix(1);
    return isThere;
  }
  /// Takes a sign if there is one; true for "-".
  bool takeSign() {
    const bool isNegative = take(u'-');
    if (!isNegative) take(u'+');
    return isNegative;
  }
  /// Takes `separator` only where exactly three digits follow it: "12,5" must never become 125.
  bool takeBeforeGroup(char16_t separator) {
    const auto end = std::find_if_not(rest_.begin() + !rest_.empty(), rest_.end(), isAsciiDigit<char16_t>);
    return end - rest_.begin() == 4 && take(separator);
  }
  std::string takeDigits() {
    std::string digits;
    for (; atDigit(); rest_.remove_prefix(1)) digits += static_cast<char>(rest_.front());
    return digits;
  }

 private:
  std::u16string_view rest_;
};

std::string integerDigits(NumberReader& reader, char16_t decimalSeparator, char16_t groupSeparator) {
  std::string digits = reader.takeDigits();
  if (groupSeparator == decimalSeparator) return digits;
  while (!digits.empty() && reader.takeBeforeGroup(groupSeparator)) digits += reader.takeDigits();
  return digits;
}

/// Nothing when an exponent is begun but has no digits.
std::optional<int> exponentOf(NumberReader& reader) {
  if (!reader.take(u'e') && !reader.take(u'd')) return 0;
  const bool isNegative = reader.takeSign();
  const std::string digits = reader.takeDigits();
  if (digits.empty()) return std::nullopt;
  int exponent = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
  if (error != std::errc{} || exponent > exponentLimit) exponent = exponentLimit;
  return isNegative ? -exponent : exponent;
}

/// Digits of the base 8 or 16 as a signed number of 16 or 32 bits, as many as its value needs.
std::optional<double> wholeNumber(std::u16string_view text, int base) {
  const std::string digits = utf8(text);
  std::uint32_t value = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return value <= 0xFFFF ? static_cast<std::int16_t>(value) : static_cast<std::int32_t>(value);
}

}  // namespace

std::optional<DecimalDigits> strictDecimal(std::u16string_view text, char16_t decimalSeparator,
                                           char16_t groupSeparator) {
  NumberReader reader(withoutWhiteSpace(text));
  const bool isNegative = reader.takeSign();
  std::string digits = integerDigits(reader, decimalSeparator, groupSeparator);
  const auto integerCount = static_cast<int>(digits.size());
  if (reader.take(decimalSeparator)) digits += reader.takeDigits();
  if (digits.empty()) return std::nullopt;
  const auto exponent = exponentOf(reader);
  if (!exponent || !reader.atEnd()) return std::nullopt;
  return decimalDigits(isNegative, std::move(digits), integerCount + *exponent);
}

std::optional<double> strictNumber(std::u16string_view text, char16_t decimalSeparator,
                                   char16_t groupSeparator) {
  const std::u16string_view content = withoutWhiteSpace(text);
  if (content.starts_with(u"&H") || content.starts_with(u"&h")) return wholeNumber(content.substr(2), 16);
  if (content.starts_with(u"&O") || content.starts_with(u"&o")) return wholeNumber(content.substr(2), 8);
  const auto decimal = strictDecimal(content, decimalSeparator, groupSeparator);
  if (!decimal) return std::nullopt;
  return decimalValue(*decimal);
}

}  // namespace zentaro
