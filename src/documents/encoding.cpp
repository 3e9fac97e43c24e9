// The field encoders.
#include "documents/encoding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "automation/numbers.h"
#include "platform/services.h"
#include "text/trimming.h"
#include "util/lm_string_lib.h"

namespace zentaro {

namespace {

struct Replacement {
  char16_t from, to;
};
// Upper-case accented vowels are not among them: they become a full stop.
constexpr std::array<Replacement, 8> replacements{{{u'ñ', u'n'},
                                                   {u'Ñ', u'N'},
                                                   {u'á', u'a'},
                                                   {u'é', u'e'},
                                                   {u'í', u'i'},
                                                   {u'ó', u'o'},
                                                   {u'ú', u'u'},
                                                   {u'"', u'\''}}};

char16_t sevenBit(char16_t character) {
  const auto* found = std::find_if(replacements.begin(), replacements.end(),
                                   [=](const Replacement& entry) { return entry.from == character; });
  if (found != replacements.end()) return found->to;
  return character > 127 ? u'.' : character;
}

}  // namespace

std::u16string CleanText(const Variant& value, std::int32_t length) {
  constexpr std::int32_t usualLength = 20;
  const std::u16string field = lmStringLib::FixLen(toText(value), length == 0 ? usualLength : length);
  std::u16string text(withoutSpaces<char16_t>(field));
  std::transform(text.begin(), text.end(), text.begin(), sevenBit);
  return text;
}

std::u16string FormatImplied(double value, std::int16_t decimals) {
  const double whole = std::floor(value * std::pow(10.0, decimals) + 0.5);
  if (!std::isfinite(whole)) throw AutomationError(ErrorNumber::Overflow);
  std::array<char, 320> digits;  // the largest double has 309
  const auto end = std::to_chars(digits.begin(), digits.end(), whole, std::chars_format::fixed, 0);
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
