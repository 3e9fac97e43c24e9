// The formatting masks, as far as the operations that use them do not show them.
#include "automation/masks.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/values.h"

namespace zentaro::masks_test {

using testing::textOrError;

TEST(Masks, RoundHalfAwayFromZeroOnTheDecimalDigits) {
  const testing::PointRegion region;
  EXPECT_EQ(maskDate({45291.999999}) + maskTime({45291.999999}), u"240101000000")
      << "a rounded second moves the day";
  const struct {
    Variant value;
    const char *whole, *amount;
  } rows[] = {{-1000.5, "-00001001", "-1,000.50"},
              {-0.004, "00000000", "0.00"},
              {1.005, "00000001", "1.01"},
              {999999.995, "01000000", "1,000,000.00"},
              {99999999.5, "100000000", "99,999,999.50"},
              {5e-324, "00000000", "0.00"},
              {Currency::fromScaled(9223372036854775807), "922337203685478", "922,337,203,685,477.58"},
              {Currency::fromScaled(-49), "00000000", "0.00"},
              {12345678901234.56, "12345678901235", "12,345,678,901,234.56"},
              {"12345678901234567890", "12345678901234567890", "12,345,678,901,234,567,890.00"},
              {"1E999", "error 6", "error 6"},
              {std::numeric_limits<double>::quiet_NaN(), "error 6", "error 6"},
              {Variant::missing(), "error 13", "error 13"}};
  for (const auto& row : rows) {
    EXPECT_EQ(textOrError([&row] { return maskWholeNumber8(row.value); }), row.whole) << row.amount;
    EXPECT_EQ(textOrError([&row] { return maskAmount(row.value); }), row.amount);
  }
}

}  // namespace zentaro::masks_test
