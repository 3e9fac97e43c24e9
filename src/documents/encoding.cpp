// Texts become 7-bit and amounts whole numbers here; nothing of it depends on the printer.
#include "documents/encoding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "automation/numbers.h"
#include "platform/services.h"
#include "util/lm_string_lib.h"

namespace zentaro {

namespace {

struct Replacement {
  char16_t from, to;
};
// Upper-case accented vowels are not among them: they become a full stop.
constexpr std::array<Replacement, 7> replacements{
    {{u'ñ', u'n'}, {u'Ñ', u'N'}, {u'á', u'a'}, {u'é', u'e'}, {u'í', u'i'}, {u'ó', u'o'}, {u'ú', u'u'}}};

char16_t sevenBit(char16_t character) {
  if (character <= 127) return character == u'"' ? u'\'' : character;
  const auto* found = std::ranges::find(replacements, character, &Replacement::from);
  return found != replacements.end() ? found->to : u'.';
}

double powerOfTen(std::int16_t exponent) {
  constexpr std::array usual{1.0, 10.0, 100.0, 1000.0};  // of a field; std::pow takes its time
  const bool isUsual = exponent >= 0 && static_cast<std::size_t>(exponent) < usual.size();
  return isUsual ? usual[static_cast<std::size_t>(exponent)] : std::pow(10.0, exponent);
}

}  // namespace

std::u16string CleanText(const Variant& value, std::int32_t length) {
  constexpr std::int32_t usualLength = 20;
  std::u16string text = lmStringLib::FixLen(toText(value), length == 0 ? usualLength : length);
  text.erase(text.find_last_not_of(u' ') + 1);
  text.erase(0, text.find_first_not_of(u' '));
  std::transform(text.begin(), text.end(), text.begin(), sevenBit);
  return text;
}

std::u16string FormatImplied(double value, std::int16_t decimals) {
  const double whole = std::floor(value * powerOfTen(decimals) + 0.5);
  if (!std::isfinite(whole)) throw AutomationError(ErrorNumber::Overflow);
  std::array<char, 320> digits;  // the largest double has 309
  // Nearly every amount is an integer of 64 bits, whose digits come much faster.
  constexpr double largestExact = 9'007'199'254'740'992.0;
  const auto end = std::fabs(whole) <= largestExact
                       ? std::to_chars(digits.begin(), digits.end(), static_cast<std::int64_t>(whole))
                       : std::to_chars(digits.begin(), digits.end(), whole, std::chars_format::fixed, 0);
  return {digits.begin(), end.ptr};
}

std::u16string implied(const Variant& value, std::int16_t decimals) {
  return FormatImplied(toDouble(value), decimals);
}

std::optional<double> asNumber(const Variant& value) {
  std::optional<double> number;
  switch (value.kind()) {
    case Variant::Kind::Int16:
    case Variant::Kind::Int32:
    case Variant::Kind::Double:
    case Variant::Kind::Single:
    case Variant::Kind::Currency: number = toDouble(value); break;
    case Variant::Kind::Text: {
      const Regional regional = services().regional->current();
      number = strictNumber(value.text(), regional.decimalSeparator, regional.groupSeparator);
      break;
    }
    default: break;
  }
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<Date> asDate(const Variant& value) {
  std::optional<Date> date;
  if (value.is(Variant::Kind::Date)) date = value.date();
  if (value.is(Variant::Kind::Text)) date = textToDate(value.text());
  if (!date) {
    if (const std::optional<double> dayCount = asNumber(value)) date = Date{*dayCount};
  }
  return date && isDateInRange(*date) ? date : std::nullopt;
}

Date dateValue(const Variant& value) {
  if (value.is(Variant::Kind::Text) && !textToDate(value.text())) {
    if (const std::optional<double> dayCount = asNumber(value)) return toDate(*dayCount);
  }
  return toDate(value);
}

bool equalsZero(const Variant& value) {
  return value.is(Variant::Kind::Text) ? dateValue(value).days == 0 : toDouble(value) == 0;
}

Variant firstCharacters(const Variant& value, std::size_t count) {
  switch (value.kind()) {
    case Variant::Kind::Null:
    case Variant::Kind::Missing:
    case Variant::Kind::Array:
    case Variant::Kind::Object: return value;
    default: return toText(value).substr(0, count);
  }
}

}  // namespace zentaro
