// Decimal numbers from text, exactly.
#include "till/document/decimal.h"

#include <gtest/gtest.h>

namespace zentaro::till::decimal_test {

TEST(Decimal, IsReadExactlyOrNotAtAll) {
  const struct {
    const char* text;
    int decimals;
    std::int64_t value;
  } good[] = {{"0.1", 2, 10}, {"0012.50", 2, 1250}, {"1.2500", 2, 125},
              {"0.00", 3, 0}, {"0.525", 3, 525},    {"9999999999999.99", 2, 999999999999999}};
  for (const auto& row : good) {
    const DecimalReading reading = readDecimal(row.text, row.decimals);
    EXPECT_EQ(reading.value, row.value) << row.text;
    EXPECT_EQ(reading.problem, "") << row.text;
  }
  const std::pair<const char*, const char*> bad[] = {{"99999999999999.99", "too large"},
                                                     {"1.005", "more than 2 decimals"},
                                                     {"12,50", "comma"},
                                                     {"-1", "negative"},
                                                     {"1e2", "exponent"},
                                                     {"", "empty"}};
  for (const auto& [text, problem] : bad)
    EXPECT_NE(readDecimal(text, 2).problem.find(problem), std::string::npos) << text;
  for (const char* text : {".5", "5.", "1.2.3", " 1", "+1"})
    EXPECT_NE(readDecimal(text, 2).problem.find("no number"), std::string::npos) << text;
}

TEST(Decimal, IsWrittenWithItsDecimals) {
  EXPECT_EQ(centsText(-5), "-0.05");
  EXPECT_EQ(centsText(123456), "1234.56");
  EXPECT_EQ(shortDecimalText(525, 3), "0.525");
  EXPECT_EQ(shortDecimalText(1000000, 3), "1000");
}

}  // namespace zentaro::till::decimal_test
