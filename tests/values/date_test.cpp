// Day counts and the calendar, and dates in texts.
#include "automation/date.h"

#include <gtest/gtest.h>

#include <limits>

#include "automation/conversions.h"
#include "automation/masks.h"
#include "support/bytes.h"
#include "support/values.h"

namespace zentaro::date_test {

using testing::errorOf;
using testing::textOrError;

std::string isoOrError(double days) {
  return textOrError([days] { return utf16(isoText({days})); });
}

TEST(Dates, CountDaysFromTheEndOf1899) {
  const struct {
    double days;
    const char* text;
  } rows[] = {{0, "1899-12-30T00:00:00"},
              {2, "1900-01-01T00:00:00"},
              {45366, "2024-03-15T00:00:00"},
              {61, "1900-03-01T00:00:00"},
              {-1.25, "1899-12-29T06:00:00"},
              {-0.25, "1899-12-30T06:00:00"},
              {-0.999999, "1899-12-31T00:00:00"},
              {-1.999999, "1899-12-30T00:00:00"},
              {45291.999999, "2024-01-01T00:00:00"},
              {-657434, "0100-01-01T00:00:00"},
              {-657434.75, "0100-01-01T18:00:00"},
              {2958465.9999, "9999-12-31T23:59:51"},
              {2958465.999999, "error 6"},
              {2958466, "error 6"},
              {-657435, "error 6"},
              {std::numeric_limits<double>::infinity(), "error 6"},
              {std::numeric_limits<double>::quiet_NaN(), "error 6"}};
  for (const auto& row : rows) {
    EXPECT_EQ(isoOrError(row.days), row.text) << row.days;
    EXPECT_EQ(isDateInRange({row.days}), row.text != std::string("error 6")) << row.days;
  }
}

TEST(Dates, AreMadeOfTheirParts) {
  EXPECT_EQ(dateOf({2024, 3, 15}).days, 45366);
  EXPECT_EQ(dateOf({1899, 12, 29, 6, 0, 0}).days, -1.25);
  EXPECT_EQ(dateOf({1899, 12, 30, 6, 0, 0}).days, 0.25);
  EXPECT_EQ(errorOf([] { dateOf({2024, 2, 29}); }), 0);
  for (const CalendarTime& parts :
       {CalendarTime{2023, 2, 29}, CalendarTime{1900, 2, 29}, CalendarTime{2024, 13, 1},
        CalendarTime{2024, 0, 1}, CalendarTime{2024, 257, 1}, CalendarTime{2024, 1, 0},
        CalendarTime{2024, 4, 31}, CalendarTime{2024, 1, 258}, CalendarTime{99, 1, 1},
        CalendarTime{10000, 1, 1}, CalendarTime{2024, 1, 1, 24, 0, 0}, CalendarTime{2024, 1, 1, 0, 60, 0},
        CalendarTime{2024, 1, 1, 0, 0, 60}, CalendarTime{2024, 1, 1, -1, 0, 0}}) {
    EXPECT_EQ(errorOf([&parts] { dateOf(parts); }), 13)
        << parts.year << "-" << parts.month << "-" << parts.day << " " << parts.hour;
  }
}

TEST(Dates, EverySecondOfADayAndEveryDaySurviveTheWayThereAndBack) {
  for (int day = -657434; day <= 2958465; day += 97) {
    ASSERT_EQ(dateOf(calendarTime({static_cast<double>(day)})).days, day);
  }
  for (int second = 0; second < 86400; second += 7) {
    for (const CalendarTime& day :
         {CalendarTime{2958, 1, 1}, CalendarTime{1899, 12, 29}, CalendarTime{101, 5, 3}}) {
      CalendarTime parts = day;
      parts.hour = second / 3600;
      parts.minute = second / 60 % 60;
      parts.second = second % 60;
      ASSERT_EQ(calendarTime(dateOf(parts)), parts) << second;
    }
  }
}

std::string dateInText(const std::string& text) {
  const auto date = textToDate(utf16(text));
  return date ? isoText(*date) : "no date";
}

TEST(Dates, AreReadFromTexts) {
  const testing::PointRegion region;
  for (const auto& [text, date] : testing::table(R"(
    2024-03-15 => 2024-03-15T00:00:00; 2024-03-15 14:05 => 2024-03-15T14:05:00; 15.03.29 => 2029-03-15T00:00:00
    2024-03-15T14:05:59 => 2024-03-15T14:05:59; '  2024-3-5   7:5:9 ' => 2024-03-05T07:05:09
    15/03/2024 23:59:59 => 2024-03-15T23:59:59; 15-3-24 => 2024-03-15T00:00:00; 15.03.30 => 1930-03-15T00:00:00
    29/02/2024 => 2024-02-29T00:00:00; 24-03-15 => 2015-03-24T00:00:00
    14:05 => 1899-12-30T14:05:00; 0:00:07 => 1899-12-30T00:00:07)"))
    EXPECT_EQ(dateInText(text), date) << text;
  const std::string none =
      "|45366|12.30|45366.5|2024-13-01|03/15/2024|31/02/2024|2024-03-15 25:00|2024-03-15 14|2024-03-15 14:|"
      "2024-03-15 14:05:|2024-03-15 14:05 x|2024-03-15T|2024-03-15x|2024-03/15|2024-03|20-- "
      ":|15/03/124|15/03/4|"
      "0099-01-01|02024-03-15|2024-003-15|24:00|12:60";
  for (const std::string& text : testing::split(none, '|')) EXPECT_EQ(dateInText(text), "no date") << text;
}

TEST(Dates, FollowTheRegionalShortDate) {
  testing::PointRegion region;
  for (const auto& [pattern, text] : testing::table(
           "dd/mm/yyyy => 05/03/2024; m/d/yy => 3/5/24; d.M.yyyy => 5.3.2024; yyyy-mm-dd => 2024-03-05")) {
    region.regional.settings.shortDate = utf16(pattern);
    EXPECT_EQ(dateInText(text), "2024-03-05T00:00:00") << pattern;
    EXPECT_EQ(utf8(maskShortDate(dateOf({2024, 3, 5}))), text) << pattern;
  }
  EXPECT_EQ(dateInText("24-03-05"), "no date") << "a year that comes first has four digits";
  region.regional.settings.shortDate = u"nonsense";
  EXPECT_EQ(dateInText("05/03/2024"), "2024-03-05T00:00:00") << "day first without a usable pattern";
}

}  // namespace zentaro::date_test
