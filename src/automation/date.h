// The automation date type: days since 30 December 1899 with the time of day as the fraction. In a
// negative date the whole part counts backward while the fraction still counts forward: -1.25 is 29
// December 1899, 06:00.
#pragma once

#include <string>
#include <string_view>

#include "zentaro_api.h"

namespace zentaro {

struct Date {
  double days = 0;
  bool operator==(const Date&) const = default;
};

/// A moment of the proleptic Gregorian calendar, to the second.
struct CalendarTime {
  int year = 1899, month = 12, day = 30, hour = 0, minute = 0, second = 0;
  bool operator==(const CalendarTime&) const = default;
};

/// Whether the date, rounded to the nearest second, lies between 1 January 100 and 31 December 9999.
ZENTARO_API bool isDateInRange(Date date);
/// Rounded to the nearest second. Raises 6 (overflow) for a date outside the range, NaN and
/// infinities included.
ZENTARO_API CalendarTime calendarTime(Date date);
/// Raises 13 (type mismatch) when the parts do not form a date between the years 100 and 9999 and a
/// time of day.
ZENTARO_API Date dateOf(const CalendarTime& parts);
/// "2024-03-15T14:05:00"; raises as calendarTime does.
ZENTARO_API std::string isoText(Date date);

}  // namespace zentaro
