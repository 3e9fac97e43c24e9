// One function for each wanted type, one case for each kind that a value can have.
#include "automation/conversions.h"

#include <cmath>

#include "automation/automation_error.h"
#include "automation/masks.h"
#include "automation/numbers.h"
#include "platform/services.h"
#include "text/ascii.h"
#include "text/digits.h"
#include "text/trimming.h"
#include "text/unicode.h"

namespace zentaro {
namespace {

using Kind = Variant::Kind;

/// Null, and the kinds that no conversion accepts.
[[noreturn]] void raiseUnconvertible(Kind kind) {
  throw AutomationError(kind == Kind::Null ? ErrorNumber::InvalidUseOfNull : ErrorNumber::TypeMismatch);
}

Regional regional() { return services().regional->current(); }

double textToNumber(const std::u16string& text) {
  const Regional settings = regional();
  const auto number = strictNumber(text, settings.decimalSeparator, settings.groupSeparator);
  if (!number) throw AutomationError(ErrorNumber::TypeMismatch);
  if (std::isinf(*number)) throw AutomationError(ErrorNumber::Overflow);
  return *number;
}

std::u16string timeText(const CalendarTime& parts) {
  return clockText(parts.hour, parts.minute, parts.second);
}

std::u16string dateText(Date date) {
  const CalendarTime parts = calendarTime(date);
  const CalendarTime dayZero;
  const bool isDayZero =
      parts.year == dayZero.year && parts.month == dayZero.month && parts.day == dayZero.day;
  if (isDayZero) return timeText(parts);
  const bool isMidnight = parts.hour == 0 && parts.minute == 0 && parts.second == 0;
  return isMidnight ? maskShortDate(date) : maskShortDate(date) + u" " + timeText(parts);
}

Date dateInRange(Date date) {
  if (!isDateInRange(date)) throw AutomationError(ErrorNumber::Overflow);
  return date;
}

}  // namespace

std::u16string toText(const Variant& value) {
  switch (value.kind()) {
    case Kind::Empty: return {};
    case Kind::Boolean: return value.boolean() ? u"True" : u"False";
    case Kind::Int16: return utf16(std::to_string(value.int16()));
    case Kind::Int32: return utf16(std::to_string(value.int32()));
    case Kind::Double: return numberText(value.number(), regional().decimalSeparator);
    case Kind::Single: return numberText(value.single(), regional().decimalSeparator);
    case Kind::Currency: return currencyText(value.currency(), regional().decimalSeparator);
    case Kind::Date: return dateText(value.date());
    case Kind::Text: return value.text();
    case Kind::Null:
    case Kind::Missing:
    case Kind::Array:
    case Kind::Object: break;
  }
  raiseUnconvertible(value.kind());
}

double toDouble(const Variant& value) {
  switch (value.kind()) {
    case Kind::Empty: return 0;
    case Kind::Boolean: return value.boolean() ? -1 : 0;
    case Kind::Int16: return value.int16();
    case Kind::Int32: return value.int32();
    case Kind::Double: return value.number();
    case Kind::Single: return value.single();
    case Kind::Currency: return value.currency().toDouble();
    case Kind::Date: return value.date().days;
    case Kind::Text: return textToNumber(value.text());
    case Kind::Null:
    case Kind::Missing:
    case Kind::Array:
    case Kind::Object: break;
  }
  raiseUnconvertible(value.kind());
}

std::int16_t toInt16(const Variant& value) { return roundToInt16(toDouble(value)); }

std::int32_t toInt32(const Variant& value) { return roundToInt32(toDouble(value)); }

bool toBoolean(const Variant& value) {
  if (value.is(Kind::Text)) {
    const std::u16string_view word = trimmed(std::u16string_view(value.text()));
    if (equalIgnoringCase<char16_t>(word, u"True")) return true;
    if (equalIgnoringCase<char16_t>(word, u"False")) return false;
  }
  return toDouble(value) != 0;
}

Currency toCurrency(const Variant& value) {
  if (value.is(Kind::Currency)) return value.currency();
  if (value.is(Kind::Text)) {
    const Regional settings = regional();
    const auto decimal = strictDecimal(value.text(), settings.decimalSeparator, settings.groupSeparator);
    if (decimal) return Currency::fromDecimal(*decimal);
  }
  return Currency::fromDouble(toDouble(value));
}

Date toDate(const Variant& value) {
  if (!value.is(Kind::Text)) return dateInRange(value.is(Kind::Date) ? value.date() : Date{toDouble(value)});
  const auto date = textToDate(value.text());
  if (!date) throw AutomationError(ErrorNumber::TypeMismatch);
  return *date;
}

}  // namespace zentaro
