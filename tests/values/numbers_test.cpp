// Numbers in texts, and rounding to whole numbers.
#include "automation/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "text/unicode.h"
#include "values/values.h"

namespace zentaro {
namespace {

using testing::errorOf;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Numbers, AreWrittenWithFifteenSignificantDigits) {
  const struct {
    double value;
    const char* text;
  } rows[] = {{0, "0"},
              {-0.0, "0"},
              {1.005, "1.005"},
              {0.1 + 0.2, "0.3"},
              {1.0 / 3, "0.333333333333333"},
              {100.0 / 3, "33.3333333333333"},
              {1.0 / 30, "3.33333333333333E-02"},
              {1e-15, "0.000000000000001"},
              {1e-16, "1E-16"},
              {1.5e-20, "1.5E-20"},
              {0.01234567890123, "0.01234567890123"},
              {999999999999999, "999999999999999"},
              {999999999999999.9, "1E+15"},
              {123456789012345678.0, "1.23456789012346E+17"},
              {9.9999999999999995, "10"},
              {5e-324, "4.94065645841247E-324"},
              {std::numeric_limits<double>::max(), "1.79769313486232E+308"},
              {infinity, "1.#INF"},
              {-infinity, "-1.#INF"},
              {notANumber, "1.#QNAN"}};
  for (const auto& row : rows) EXPECT_EQ(utf8(numberText(row.value, u'.')), row.text);
  EXPECT_EQ(numberText(-2.5, u','), u"-2,5");
  EXPECT_EQ(numberText(1.5e-20, u','), u"1,5E-20");
}

TEST(Numbers, AreReadWhole) {
  const struct {
    const char16_t* text;
    double value;
  } rows[] = {{u"12.5", 12.5},
              {u" \t-12.5 \r\n", -12.5},
              {u"+7", 7},
              {u".5", 0.5},
              {u"5.", 5},
              {u"1,234,567.5", 1234567.5},
              {u"1E3", 1000},
              {u"1.5d-2", 0.015},
              {u"123456789012345678", 123456789012345678.0},
              {u"1E-400", 0},
              {u"1E-326", 0},
              {u"1E400", infinity},
              {u"-1E99999999999", -infinity},
              {u"0E99999999999", 0},
              {u"&h8000", -32768},
              {u"&HFFFF", -1},
              {u"&H08000", 32768},
              {u"&HFFFFFFFF", -1},
              {u"&O17", 15},
              {u"&O177777", -1},
              {u"&O200000", 65536}};
  for (const auto& row : rows) EXPECT_EQ(strictNumber(row.text, u'.', u','), row.value) << utf8(row.text);
  for (const char16_t* text :
       {u"&H123456789", u"&H",    u"&HFG", u"&H\u0141", u"&O8",  u"-&H1",   u"",        u"  ", u".",
        u"-",           u"--1",   u"1 2",  u"12x",      u"1E",   u"E5",     u"1.2.3",   u",1", u"1,,2",
        u"1,",          u"1.5,0", u"01B0", u"\uFF11",   u"12,5", u"1,2345", u"1,23,456"}) {
    EXPECT_EQ(strictNumber(text, u'.', u','), std::nullopt) << utf8(text);
  }
  EXPECT_EQ(strictNumber(u"1.234,5", u',', u'.'), 1234.5);
  EXPECT_EQ(strictNumber(u"1,234.5", u',', u'.'), std::nullopt);
  EXPECT_EQ(strictNumber(u"1.5", u'.', u'.'), 1.5) << "the decimal separator comes first";
}

TEST(Numbers, AreReadFromTheBeginningOfAText) {
  const struct {
    const char16_t* text;
    double value;
  } rows[] = {{u"0001234.50", 1234.5},
              {u"12,50", 12},
              {u"30abc", 30},
              {u"abc", 0},
              {u"", 0},
              {u"  - 1 2.5x", -12.5},
              {u"\n1\t0", 10},
              {u"1\r0", 1},
              {u"+3", 3},
              {u"1E3", 1},
              {u"1.2.3", 1.2},
              {u".5", 0.5},
              {u"-", 0},
              {u"- -5", 0},
              {u"&H10", 0},
              {u"C080", 0},
              {u"20.5", 20.5},
              {u"99999", 99999}};
  for (const auto& row : rows) EXPECT_EQ(leadingNumber(row.text), row.value) << utf8(row.text);
  EXPECT_EQ(leadingNumber(std::u16string(400, u'9')), infinity);
}

TEST(Numbers, AreReadFromHexadecimalDigits) {
  EXPECT_EQ(leadingHex(u"C080"), 0xC080U);
  EXPECT_EQ(leadingHex(u"ffffx"), 0xFFFFU);
  EXPECT_EQ(leadingHex(u"G1"), 0U);
  EXPECT_EQ(leadingHex(u" 1"), 0U);
  EXPECT_EQ(leadingHex(u"123456789"), 0x23456789U);

  EXPECT_EQ(leadingSignedHex(u"0600"), 0x600);
  EXPECT_EQ(leadingSignedHex(u" 80 00"), -32768);
  EXPECT_EQ(leadingSignedHex(u"FFFF"), -1);
  EXPECT_EQ(leadingSignedHex(u"08000"), -32768);
  EXPECT_EQ(leadingSignedHex(u"FFFFFFFEz"), -2);
  EXPECT_EQ(leadingSignedHex(u"zz"), 0);
  EXPECT_EQ(errorOf([] { leadingSignedHex(u"123456789"); }), 6);
}

TEST(Numbers, RoundToWholeNumbersWithTiesToEven) {
  const struct {
    double value;
    int rounded;
  } rows[] = {{2.5, 2}, {3.5, 4}, {-2.5, -2}, {-0.4, 0}, {0.6, 1}, {32767.4, 32767}, {-32768.5, -32768}};
  for (const auto& row : rows) {
    EXPECT_EQ(roundToInt16(row.value), row.rounded);
    EXPECT_EQ(roundToInt32(row.value), row.rounded);
  }
  EXPECT_EQ(roundToInt32(32767.5), 32768);
  EXPECT_EQ(roundToInt32(2147483647.4), 2147483647);
  EXPECT_EQ(roundToInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
  for (const double value : {32767.5, -32769.0, 1e15, infinity, -infinity, notANumber}) {
    EXPECT_EQ(errorOf([value] { roundToInt16(value); }), 6) << value;
  }
  for (const double value : {2147483647.5, -2147483649.0, 1e15, infinity, notANumber}) {
    EXPECT_EQ(errorOf([value] { roundToInt32(value); }), 6) << value;
  }
}

}  // namespace
}  // namespace zentaro
