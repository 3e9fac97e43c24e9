// The formatting masks that the library uses. Numbers are rounded half away from zero on the digits
// that they have: all of a currency or a text, those of a double that tell it from its neighbours.
// The masks of dates raise as calendarTime does, those of numbers as toDouble does, and 6
// (overflow) for an infinity and NaN.
#pragma once

#include <string>

#include "automation/date.h"
#include "automation/variant.h"

namespace zentaro {

/// Mask "yymmdd".
std::u16string maskDate(Date date);
/// Mask "hhnnss", 24 hours.
std::u16string maskTime(Date date);
/// Mask "00000000": rounded to a whole number, at least eight digits, "-" in front of a negative one.
std::u16string maskWholeNumber8(const Variant& value);
/// Mask "###,###,##0.00": two decimals, the integer digits grouped in threes, with the regional
/// separators; a group separator that the code page lacks becomes a no-break space.
std::u16string maskAmount(const Variant& value);
/// The regional short date, "15/03/2024"; a separator that the code page lacks becomes a no-break space.
std::u16string maskShortDate(Date date);

}  // namespace zentaro
