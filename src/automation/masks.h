// The formatting masks that the library uses.
#pragma once

#include <string>

#include "automation/date.h"
#include "automation/variant.h"

namespace zentaro {

/// Mask "yymmdd"; raises as calendarTime does.
std::u16string maskDate(Date date);
/// Mask "hhnnss", 24 hours.
std::u16string maskTime(Date date);
/// Mask "00000000": rounded to a whole number (half away from zero), at least eight digits, "-" in front of a negative one.
/// `value` is anything that converts to a number.
std::u16string maskWholeNumber8(const Variant& value);
/// Mask "###,###,##0.00": two decimals (half away from zero on the value's 15 significant digits), the integer digits
/// grouped in threes, with the regional separators. `value` is anything that converts to a number; a currency is exact.
std::u16string maskAmount(const Variant& value);
/// The regional short date, "15/03/2024".
std::u16string maskShortDate(Date date);

}  // namespace zentaro
