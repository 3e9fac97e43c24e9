// Decimal numbers from text, exactly.
#include "sale/decimal.h"

#include <gtest/gtest.h>

namespace zentaro::tools {
namespace {

TEST(Decimal, IsReadExactlyOrNotAtAll) {
  struct {
    const char* text;
    int decimals;
    std::int64_t value;
    const char* problem;  // a part of it; null for none
  } const rows[] = {
      {"0.1", 2, 10, nullptr},
      {"12.5", 2, 1250, nullptr},
      {"0012.50", 2, 1250, nullptr},
      {"1.2500", 2, 125, nullptr},
      {"0", 2, 0, nullptr},
      {"0.00", 3, 0, nullptr},
      {"0.525", 3, 525, nullptr},
      {"9999999999999.99", 2, 999999999999999, nullptr},
      {"99999999999999.99", 2, 0, "too large"},
      {"1.005", 2, 0, "more than 2 decimals"},
      {"12,50", 2, 0, "comma"},
      {"-1", 2, 0, "negative"},
      {"1e2", 2, 0, "exponent"},
      {"", 2, 0, "empty"},
      {".5", 2, 0, "no number"},
      {"5.", 2, 0, "no number"},
      {"1.2.3", 2, 0, "no number"},
      {" 1", 2, 0, "no number"},
      {"+1", 2, 0, "no number"},
  };
  for (const auto& row : rows) {
    const DecimalReading reading = readDecimal(row.text, row.decimals);
    EXPECT_EQ(reading.value, row.value) << row.text;
    EXPECT_EQ(reading.problem.empty(), row.problem == nullptr) << row.text << ": " << reading.problem;
    if (row.problem != nullptr) {
      EXPECT_NE(reading.problem.find(row.problem), std::string::npos) << reading.problem;
    }
  }
}

TEST(Decimal, IsWrittenWithItsDecimals) {
  EXPECT_EQ(centsText(0), "0.00");
  EXPECT_EQ(centsText(-5), "-0.05");
  EXPECT_EQ(centsText(123456), "1234.56");
  EXPECT_EQ(shortDecimalText(2000, 3), "2");
  EXPECT_EQ(shortDecimalText(525, 3), "0.525");
  EXPECT_EQ(shortDecimalText(1000000, 3), "1000");
}

}  // namespace
}  // namespace zentaro::tools
