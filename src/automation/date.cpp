// Day counts to the parts of the calendar and back.
#include "automation/date.h"

#include <chrono>
#include <cmath>
#include <optional>

#include "automation/automation_error.h"
#include "text/digits.h"
#include "text/unicode.h"

namespace zentaro {
namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr int firstYear = 100, lastYear = 9999;
constexpr int secondsPerDay = 86'400;

constexpr year_month_day calendarDay(int year, unsigned month, unsigned day) {
  return {std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
}
constexpr sys_days dayZero = calendarDay(1899, 12, 30);
constexpr auto firstDay = (sys_days(calendarDay(firstYear, 1, 1)) - dayZero).count();
constexpr auto lastDay = (sys_days(calendarDay(lastYear, 12, 31)) - dayZero).count();

struct Moment {
  int day = 0;     // from day 0
  int second = 0;  // of the day
};

std::optional<Moment> momentOf(Date date) {
  // Written so that NaN fails too; keeps the whole days within an int.
  if (!(std::fabs(date.days) < 10'000'000)) return std::nullopt;
  const double day = std::trunc(date.days);
  Moment moment{static_cast<int>(day),
                static_cast<int>(std::lround(std::fabs(date.days - day) * secondsPerDay))};
  if (moment.second == secondsPerDay) moment = {moment.day + 1, 0};
  if (moment.day < firstDay || moment.day > lastDay) return std::nullopt;
  return moment;
}

bool isBetween(int value, int low, int high) { return value >= low && value <= high; }

bool isTimeOfDay(const CalendarTime& parts) {
  return isBetween(parts.hour, 0, 23) && isBetween(parts.minute, 0, 59) && isBetween(parts.second, 0, 59);
}

bool isDay(const CalendarTime& parts) {
  // The calendar types keep only the low bits of a number that is too large.
  return isBetween(parts.year, firstYear, lastYear) && isBetween(parts.month, 1, 12) &&
         isBetween(parts.day, 1, 31) &&
         calendarDay(parts.year, static_cast<unsigned>(parts.month), static_cast<unsigned>(parts.day)).ok();
}

}  // namespace

bool isDateInRange(Date date) { return momentOf(date).has_value(); }

CalendarTime calendarTime(Date date) {
  const auto moment = momentOf(date);
  if (!moment) throw AutomationError(ErrorNumber::Overflow);
  const year_month_day day = dayZero + std::chrono::days(moment->day);
  const int second = moment->second;
  return {static_cast<int>(day.year()),
          static_cast<int>(static_cast<unsigned>(day.month())),
          static_cast<int>(static_cast<unsigned>(day.day())),
          second / 3600,
          second / 60 % 60,
          second % 60};
}

Date dateOf(const CalendarTime& parts) {
  if (!isDay(parts) || !isTimeOfDay(parts)) throw AutomationError(ErrorNumber::TypeMismatch);
  const sys_days day =
      calendarDay(parts.year, static_cast<unsigned>(parts.month), static_cast<unsigned>(parts.day));
  const auto days = static_cast<double>((day - dayZero).count());
  const double time = (parts.hour * 3600 + parts.minute * 60 + parts.second) / double{secondsPerDay};
  return {days < 0 ? days - time : days + time};
}

std::string isoText(Date date) {
  const CalendarTime parts = calendarTime(date);
  return utf8(decimalText(parts.year, 4) + u"-" + decimalText(parts.month, 2) + u"-" +
              decimalText(parts.day, 2) + u"T" + clockText(parts.hour, parts.minute, parts.second));
}

}  // namespace zentaro
