// The fixed-point type: rounding into it, its range, and its texts.
#include "automation/currency.h"

#include <gtest/gtest.h>

#include <limits>

#include "automation/conversions.h"
#include "support/bytes.h"
#include "support/values.h"

namespace zentaro::currency_test {

using testing::errorOf;

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

TEST(Currency, RoundsADoubleToFourDecimalsWithTiesToEven) {
  const std::pair<double, std::int64_t> rows[] = {{12.5, 125000},
                                                  {-0.0, 0},
                                                  {1.005, 10050},
                                                  {0.00005, 0},
                                                  {0.00025, 2},
                                                  {0.00035, 4},
                                                  {-0.00005, 0},
                                                  {1.00005, 10001},
                                                  {1234.56785, 12345678},
                                                  {-0.4, -4000},
                                                  {-900719925474.25, -9007199254742500}};
  for (const auto& [value, scaled] : rows) EXPECT_EQ(Currency::fromDouble(value).scaled(), scaled) << value;
  for (const double value :
       {922337203685477.58, -922337203685478.0, 1e300, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(errorOf([value] { Currency::fromDouble(value); }), 6) << value;
}

TEST(Currency, TakesAllDigitsOfAText) {
  const testing::PointRegion region;
  for (const auto& [text, scaled] : testing::table(R"(
    922337203685477.5807 => 9223372036854775807; -922,337,203,685,477.5808 => -9223372036854775808
    922337203685477.58074999 => 9223372036854775807; 900719925474099.3001 => 9007199254740993001
    1.00005 => 10000; 1.00015 => 10002; 1.000050000000000000000000000001 => 10001; -1.00005 => -10000
    0.00005 => 0; 0.00006 => 1; 0.000009 => 0; 9999.99995 => 100000000; 1.5E3 => 15000000; &H10 => 160000)"))
    EXPECT_EQ(toCurrency(text).scaled(), std::stoll(scaled)) << text;
  for (const char* text : {"922337203685477.5808", "922337203685477.58075", "-922337203685477.5809", "1E400"})
    EXPECT_EQ(errorOf([text] { toCurrency(text); }), 6) << text;
  EXPECT_EQ(errorOf([] { toCurrency("12,5x"); }), 13);
}

TEST(Currency, IsWrittenShortAndWithFourDecimals) {
  const struct {
    std::int64_t scaled;
    const char *shortest, *four;
  } rows[] = {{0, "0", "0.0000"},
              {125000, "12.5", "12.5000"},
              {-1, "-0.0001", "-0.0001"},
              {1000000, "100", "100.0000"},
              {10050, "1.005", "1.0050"},
              {largest, "922337203685477.5807", "922337203685477.5807"},
              {smallest, "-922337203685477.5808", "-922337203685477.5808"}};
  for (const auto& row : rows) {
    const Currency value = Currency::fromScaled(row.scaled);
    EXPECT_EQ(utf8(currencyText(value, u'.')), row.shortest);
    EXPECT_EQ(currencyText4(value), row.four);
    EXPECT_EQ(currencyFromText4(row.four), value) << row.four;
    EXPECT_EQ(currencyFromText4(row.shortest), value) << row.shortest;
  }
  EXPECT_EQ(currencyText(Currency::fromScaled(-25000), u','), u"-2,5");
}

TEST(Currency, TextIsReadExactlyOrRefused) {
  EXPECT_EQ(currencyFromText4("+007.5").scaled(), 75000);
  for (const char* text :
       {"", "-", ".", ".5", "5.", "1.23456", "1,5", " 1", "1 ", "--1", "-+1", "1e3", "1.2.3"}) {
    EXPECT_EQ(errorOf([text] { currencyFromText4(text); }), 13) << text;
  }
  for (const char* text : {"922337203685477.5808", "-922337203685477.5809", "99999999999999999999999"}) {
    EXPECT_EQ(errorOf([text] { currencyFromText4(text); }), 6) << text;
  }
}

}  // namespace zentaro::currency_test
