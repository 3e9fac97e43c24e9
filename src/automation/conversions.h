// The conversions of the automation platform from a Variant to the types that the library works
// with.
//
// Everywhere: Empty is zero, False or the empty text; Null raises 94 (invalid use of Null); an
// omitted argument, an array and an object raise 13 (type mismatch), as does a text that is not of
// the wanted form; a number outside the wanted range raises 6 (overflow). True is -1. Texts are
// read and written under the regional settings of the thread's services.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/currency.h"
#include "automation/date.h"
#include "automation/variant.h"

namespace zentaro {

/// Numbers in decimal with 15 significant digits, a Single by the fewest that tell it from its
/// neighbours; "True" and "False"; a date as short date, with the time behind it when it has one,
/// or the time alone ("14:05:00") on day 0.
ZENTARO_API std::u16string toText(const Variant& value);
/// A Single exactly, with all its binary digits.
ZENTARO_API double toDouble(const Variant& value);
/// Fractions are rounded, ties to even.
ZENTARO_API std::int16_t toInt16(const Variant& value);
ZENTARO_API std::int32_t toInt32(const Variant& value);
/// Any number other than 0 is True; a text is "True" or "False" (in any case) or a number.
ZENTARO_API bool toBoolean(const Variant& value);
ZENTARO_API Currency toCurrency(const Variant& value);
/// A number is a day count; raises 6 outside the years 100 to 9999. A text is read by textToDate.
ZENTARO_API Date toDate(const Variant& value);

/// "2024-03-15", "2024-03-15 14:05", "2024-03-15T14:05:59", the same in the order of the regional
/// short date, or a time alone. "/", "-" or "." stand between the parts of the day, and blanks
/// around all of it; every part but the year may have one digit. A year that does not come first
/// may have two: 00 to 29 are 2000 to 2029, 30 to 99 are 1930 to 1999. Nothing when the text is no
/// date.
std::optional<Date> textToDate(std::u16string_view text);

}  // namespace zentaro
