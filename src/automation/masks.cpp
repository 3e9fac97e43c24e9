// Dates and numbers written by a mask.
#include "automation/masks.h"

#include <cmath>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "automation/numbers.h"
#include "platform/services.h"
#include "text/ascii.h"
#include "text/digits.h"
#include "text/unicode.h"

namespace zentaro {
namespace {

std::u16string twoDigits(int value) { return decimalText(value, 2); }

DecimalDigits decimalOf(const Variant& value) {
  if (value.is(Variant::Kind::Currency)) return value.currency().toDecimal();
  if (value.is(Variant::Kind::Text)) {
    const Regional regional = services().regional->current();
    const auto decimal = strictDecimal(value.text(), regional.decimalSeparator, regional.groupSeparator);
    // "1E999999" would have a million digits; the conversion below raises.
    if (decimal && std::isfinite(decimalValue(*decimal))) return *decimal;
  }
  const double number = toDouble(value);
  if (!std::isfinite(number)) throw AutomationError(ErrorNumber::Overflow);
  return ownDigits(number);
}

/// What the code page lacks, as the narrow blanks that some countries group by or the words between
/// the parts of a date, would be printed as a question mark.
char16_t printable(char16_t separator) {
  constexpr char16_t noBreakSpace = 0x00A0;
  const CodePage& codePage = *services().codePage;
  if (codePage.has(separator)) return separator;
  return codePage.has(noBreakSpace) ? noBreakSpace : u' ';
}

std::u16string grouped(std::u16string digits, char16_t separator) {
  for (auto position = digits.size(); position > 3;) {
    position -= 3;
    digits.insert(position, 1, separator);
  }
  return digits;
}

/// One part of a short date: a run of d, m or y. Other characters stand for themselves.
std::u16string datePart(char16_t letter, std::size_t length, const CalendarTime& parts) {
  switch (asciiLower(letter)) {
    case u'd': return decimalText(parts.day, length);
    case u'm': return decimalText(parts.month, length);
    case u'y': return length > 2 ? decimalText(parts.year, 4) : twoDigits(parts.year % 100);
    default: return std::u16string(length, printable(letter));
  }
}

}  // namespace

std::u16string maskDate(Date date) {
  const CalendarTime parts = calendarTime(date);
  return twoDigits(parts.year % 100) + twoDigits(parts.month) + twoDigits(parts.day);
}

std::u16string maskTime(Date date) {
  const CalendarTime parts = calendarTime(date);
  return twoDigits(parts.hour) + twoDigits(parts.minute) + twoDigits(parts.second);
}

std::u16string maskWholeNumber8(const Variant& value) {
  const FixedDigits digits = fixedDigits(decimalOf(value), 0);
  const std::u16string sign = digits.negative ? u"-" : u"";
  return sign + zeroPadded(utf16(digits.integer), 8);
}

std::u16string maskAmount(const Variant& value) {
  const FixedDigits digits = fixedDigits(decimalOf(value), 2);
  const Regional regional = services().regional->current();
  std::u16string text = digits.negative ? u"-" : u"";
  text += grouped(utf16(digits.integer), printable(regional.groupSeparator));
  return text + regional.decimalSeparator + utf16(digits.fraction);
}

std::u16string maskShortDate(Date date) {
  const CalendarTime parts = calendarTime(date);
  const std::u16string pattern = services().regional->current().shortDate;
  std::u16string text;
  for (std::size_t start = 0; start < pattern.size();) {
    const auto end = std::min(pattern.find_first_not_of(pattern[start], start), pattern.size());
    text += datePart(pattern[start], end - start, parts);
    start = end;
  }
  return text;
}

}  // namespace zentaro
