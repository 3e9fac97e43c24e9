// The formatting masks of dates, whole numbers and amounts.
#include "automation/masks.h"

#include <gtest/gtest.h>

#include <limits>

#include "values/values.h"

namespace zentaro {
namespace {

using testing::textOrError;

const double infinity = std::numeric_limits<double>::infinity();

struct Row {
  Variant value;
  const char* text;
};

TEST(Masks, WriteDateAndTime) {
  const Date date = dateOf({2025, 2, 1, 9, 5, 7});
  EXPECT_EQ(maskDate(date), u"250201");
  EXPECT_EQ(maskTime(date), u"090507");
  EXPECT_EQ(maskDate({45291.999999}) + maskTime({45291.999999}), u"240101000000")
      << "a rounded second moves the day";
  EXPECT_EQ(textOrError([] { return maskDate({3e6}); }), "error 6");
  EXPECT_EQ(textOrError([] { return maskTime({3e6}); }), "error 6");
  EXPECT_EQ(textOrError([] { return maskShortDate({3e6}); }), "error 6");
}

TEST(Masks, WriteWholeNumbersWithEightDigits) {
  const testing::PointRegion region;
  const Row rows[] = {{15, "00000015"},
                      {2.5, "00000003"},
                      {-0.4, "00000000"},
                      {-0.5, "-00000001"},
                      {-5, "-00000005"},
                      {99999999.5, "100000000"},
                      {1e20, "100000000000000000000"},
                      {Currency::fromScaled(9223372036854775807), "922337203685478"},
                      {"12345678901234567890", "12345678901234567890"},
                      {true, "-00000001"},
                      {Variant(), "00000000"}};
  for (const Row& row : rows) EXPECT_EQ(utf8(maskWholeNumber8(row.value)), row.text);
}

TEST(Masks, WriteAmountsWithGroups) {
  const testing::PointRegion region;
  const Row rows[] = {{1234567.5, "1,234,567.50"},
                      {999, "999.00"},
                      {-1000, "-1,000.00"},
                      {-0.0, "0.00"},
                      {1.005, "1.01"},
                      {0.005, "0.01"},
                      {-0.005, "-0.01"},
                      {-0.001, "0.00"},
                      {0.05, "0.05"},
                      {999999.995, "1,000,000.00"},
                      {12345678901234.56, "12,345,678,901,234.56"},
                      {5e-324, "0.00"},
                      {Currency::fromScaled(9223372036854775807), "922,337,203,685,477.58"},
                      {Currency::fromScaled(-49), "0.00"},
                      {"1.005", "1.01"},
                      {"1,234.5", "1,234.50"},
                      {Variant(), "0.00"}};
  for (const Row& row : rows) EXPECT_EQ(utf8(maskAmount(row.value)), row.text);
}

TEST(Masks, OfNumbersRefuseWhatIsNone) {
  const testing::PointRegion region;
  const Row rows[] = {{"abc", "error 13"},
                      {Variant::null(), "error 94"},
                      {Variant::missing(), "error 13"},
                      {Array{1}, "error 13"},
                      {-infinity, "error 6"},
                      {std::numeric_limits<double>::quiet_NaN(), "error 6"}};
  for (const Row& row : rows) {
    EXPECT_EQ(textOrError([&row] { return maskWholeNumber8(row.value); }), row.text);
    EXPECT_EQ(textOrError([&row] { return maskAmount(row.value); }), row.text);
  }
}

TEST(Masks, WriteAmountsWithTheRegionalSeparators) {
  const testing::CommaRegion region;
  EXPECT_EQ(maskAmount(1234567.5), u"1.234.567,50");
  EXPECT_EQ(maskAmount("1.234,5"), u"1.234,50");
  EXPECT_EQ(maskAmount(Currency::fromScaled(-12345)), u"-1,23");
}

}  // namespace
}  // namespace zentaro
