// Numbers in texts, and rounding to whole numbers.
#include "automation/numbers.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/bytes.h"
#include "support/values.h"
#include "text/unicode.h"

namespace zentaro::numbers_test {

using testing::errorOf;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Numbers, AreWrittenWithFifteenSignificantDigits) {
  for (const auto& [value, text] : testing::table(R"(
    0 => 0; -0.0 => 0; 1.005 => 1.005; 0.3333333333333333 => 0.333333333333333; 33.33333333333333 => 33.3333333333333
    0.03333333333333333 => 3.33333333333333E-02; 1e-15 => 0.000000000000001; 1e-16 => 1E-16; 1.5e-20 => 1.5E-20
    0.01234567890123 => 0.01234567890123; 999999999999999 => 999999999999999; 999999999999999.9 => 1E+15
    123456789012345678 => 1.23456789012346E+17; 9.9999999999999995 => 10; 5e-324 => 4.94065645841247E-324
    1.7976931348623157e308 => 1.79769313486232E+308; inf => 1.#INF; -inf => -1.#INF; nan => 1.#QNAN)"))
    EXPECT_EQ(utf8(numberText(std::strtod(value.c_str(), nullptr), u'.')), text);
  EXPECT_EQ(numberText(0.1 + 0.2, u'.'), u"0.3");
  EXPECT_EQ(numberText(-2.5, u','), u"-2,5");
  EXPECT_EQ(numberText(1.5e-20, u','), u"1,5E-20");
}

TEST(Numbers, AreReadWhole) {
  for (const auto& [text, value] : testing::table(R"(
    12.5 => 12.5; +7 => 7; .5 => 0.5; 5. => 5; 1,234,567.5 => 1234567.5; 1E3 => 1000; 1.5d-2 => 0.015
    123456789012345678 => 123456789012345678; 1E-400 => 0; 1E-326 => 0; 1E400 => inf; -1E99999999999 => -inf
    0E99999999999 => 0; &h8000 => -32768; &HFFFF => -1; &H08000 => -32768; &H00010000 => 65536; &H0000000001 => 1; &HFFFFFFFF => -1; &O17 => 15
    &O177777 => -1; &O200000 => 65536)"))
    EXPECT_EQ(strictNumber(utf16(text), u'.', u','), std::stod(value)) << text;
  EXPECT_EQ(strictNumber(u" \t-12.5 \r\n", u'.', u','), -12.5);
  const std::string none =
      "&H123456789|&H|&HFG|&H\u0141|&O8|-&H1||  |.|-|--1|1 2|12x|1E|E5|1.2.3|,1|1,,2|1,|1.5,0|01B0|12,5|1,2345|1,23,456|\uFF11";
  for (const std::string& text : testing::split(none, '|'))
    EXPECT_EQ(strictNumber(utf16(text), u'.', u','), std::nullopt) << text;
  EXPECT_EQ(strictNumber(u"1.234,5", u',', u'.'), 1234.5);
  EXPECT_EQ(strictNumber(u"1,234.5", u',', u'.'), std::nullopt);
  EXPECT_EQ(strictNumber(u"1.500", u'.', u'.'), 1.5) << "the decimal separator comes first";
  EXPECT_EQ(strictNumber(u"12,500", u',', u','), 12.5);
}

TEST(Numbers, AreReadFromTheBeginningOfAText) {
  for (const auto& [text, value] : testing::table(R"(
    0001234.50 => 1234.5; 12,50 => 12; 30abc => 30; abc => 0; '' => 0; '  - 1 2.5x' => -12.5; +3 => 3; 1E3 => 1
    1.2.3 => 1.2; .5 => 0.5; - => 0; - -5 => 0; &H10 => 0; C080 => 0; 20.5 => 20.5; 99999 => 99999)"))
    EXPECT_EQ(leadingNumber(utf16(text)), std::stod(value)) << text;
  EXPECT_EQ(leadingNumber(u"\n1\t0"), 10);
  EXPECT_EQ(leadingNumber(u"1\r0"), 1);
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
  for (const auto& [value, rounded] :
       {std::pair{2.5, 2}, {3.5, 4}, {-2.5, -2}, {-0.4, 0}, {0.6, 1}, {32767.4, 32767}, {-32768.5, -32768}}) {
    EXPECT_EQ(roundToInt16(value), rounded);
    EXPECT_EQ(roundToInt32(value), rounded);
  }
  EXPECT_EQ(roundToInt32(2147483647.4), 2147483647);
  EXPECT_EQ(roundToInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
  for (const double value : {32767.5, -32769.0, infinity, notANumber})
    EXPECT_EQ(errorOf([value] { roundToInt16(value); }), 6) << value;
  for (const double value : {2147483647.5, -2147483649.0, -infinity, notANumber})
    EXPECT_EQ(errorOf([value] { roundToInt32(value); }), 6) << value;
}

}  // namespace zentaro::numbers_test
