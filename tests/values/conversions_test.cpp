// Every kind of value to every type.
#include "automation/conversions.h"

#include <gtest/gtest.h>

#include <limits>

#include "automation/description.h"
#include "automation/numbers.h"
#include "support/values.h"

namespace zentaro::conversions_test {

using testing::errorOf;
using testing::textOrError;

const double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::numeric_limits<double>::quiet_NaN();
const Date noon = dateOf({2024, 3, 15, 12, 0, 0});

template <class Convert>
std::string numberOrError(Convert convert) {
  return textOrError([&convert] { return numberText(static_cast<double>(convert()), u'.'); });
}

TEST(Conversions, GiveTextsUnderTheRegionalSettings) {
  const testing::CommaRegion region;
  const struct {
    Variant value;
    const char* text;
  } rows[] = {{Variant(), ""},
              {true, "True"},
              {short{-7}, "-7"},
              {70000, "70000"},
              {5000000000, "5000000000"},
              {-12.5, "-12,5"},
              {-0.0, "0"},
              {1.0 / 30, "3,33333333333333E-02"},
              {notANumber, "1.#QNAN"},
              {0.1F, "0,1"},
              {1234567.875F, "1234567,9"},
              {-16777216.0F, "-16777216"},
              {std::numeric_limits<float>::infinity(), "1.#INF"},
              {Currency::fromScaled(125000), "12,5"},
              {Currency::fromScaled(-1), "-0,0001"},
              {noon, "15/03/2024 12:00:00"},
              {dateOf({2024, 3, 15}), "15/03/2024"},
              {Date{0.5}, "12:00:00"},
              {dateOf({2024, 3, 15, 0, 0, 30}), "15/03/2024 00:00:30"},
              {Date{0}, "00:00:00"},
              {Date{-1}, "29/12/1899"},
              {Date{3e6}, "error 6"},
              {"Caf\u00E9 1.5", "Caf\u00E9 1.5"}};
  for (const auto& row : rows) EXPECT_EQ(textOrError([&row] { return toText(row.value); }), row.text);
}

TEST(Conversions, GiveNumbers) {
  const testing::PointRegion region;
  const struct {
    Variant value;
    const char *number, *int16, *int32, *currency;
  } rows[] = {{Variant(), "0", "0", "0", "0"},
              {true, "-1", "-1", "-1", "-1"},
              {70000, "70000", "error 6", "70000", "70000"},
              {2.5, "2.5", "2", "2", "2.5"},
              {3.5, "3.5", "4", "4", "3.5"},
              {1234567.875F, "1234567.875", "error 6", "1234568", "1234567.875"},
              {0.1F, "0.100000001490116", "0", "0", "0.1"},
              {1e20F, "1.00000002004088E+20", "error 6", "error 6", "error 6"},
              {-0.4, "-0.4", "0", "0", "-0.4"},
              {32767.5, "32767.5", "error 6", "32768", "32767.5"},
              {1e15, "1E+15", "error 6", "error 6", "error 6"},
              {infinity, "1.#INF", "error 6", "error 6", "error 6"},
              {notANumber, "1.#QNAN", "error 6", "error 6", "error 6"},
              {Currency::fromScaled(25001), "2.5001", "3", "3", "2.5001"},
              {noon, "45366.5", "error 6", "45366", "45366.5"},
              {" 1,234.5 ", "1234.5", "1234", "1234", "1234.5"},
              {"&H8000", "-32768", "-32768", "-32768", "-32768"},
              {"1E400", "error 6", "error 6", "error 6", "error 6"},
              {"2147483648", "2147483648", "error 6", "error 6", "2147483648"},
              {"", "error 13", "error 13", "error 13", "error 13"},
              {"01B0", "error 13", "error 13", "error 13", "error 13"},
              {"15/03/2024", "error 13", "error 13", "error 13", "error 13"}};
  for (const auto& row : rows) {
    EXPECT_EQ(numberOrError([&row] { return toDouble(row.value); }), row.number);
    EXPECT_EQ(numberOrError([&row] { return toInt16(row.value); }), row.int16) << row.number;
    EXPECT_EQ(numberOrError([&row] { return toInt32(row.value); }), row.int32) << row.number;
    EXPECT_EQ(numberOrError([&row] { return toCurrency(row.value).toDouble(); }), row.currency) << row.number;
  }
}

TEST(Conversions, ReadTextsUnderTheRegionalSettings) {
  const testing::CommaRegion region;
  EXPECT_EQ(toDouble("1.234,5"), 1234.5);
  EXPECT_EQ(toCurrency("1.234,5").scaled(), 12345000);
  EXPECT_EQ(errorOf([] { toInt16("1.5"); }), 13) << "the point groups digits by three";
}

TEST(Conversions, GiveBooleans) {
  const testing::PointRegion region;
  for (const Variant& value :
       {Variant(true), Variant(-1), Variant(0.1), Variant(notANumber), Variant("TRUE"), Variant(" true "),
        Variant("2"), Variant(Currency::fromScaled(1)), Variant(noon)}) {
    EXPECT_TRUE(toBoolean(value)) << utf8(toText(value));
  }
  for (const Variant& value :
       {Variant(), Variant(0), Variant(-0.0), Variant("false"), Variant("0.0"), Variant(Date{0})}) {
    EXPECT_FALSE(toBoolean(value)) << utf8(toText(value));
  }
  for (const char* text : {"yes", "", "T"}) EXPECT_EQ(errorOf([text] { toBoolean(text); }), 13) << text;
}

TEST(Conversions, GiveDates) {
  const testing::PointRegion region;
  EXPECT_EQ(toDate(Variant()).days, 0);
  EXPECT_EQ(toDate(noon), noon);
  EXPECT_EQ(toDate(45366.5), noon);
  EXPECT_EQ(toDate(true).days, -1);
  EXPECT_EQ(toDate("2024-03-15 12:00"), noon);
  for (const char* text : {"45366", "31/02/2024", ""})
    EXPECT_EQ(errorOf([text] { toDate(text); }), 13) << text;
  for (const Variant& value : {Variant(3e6), Variant(notANumber), Variant(Date{-1e6})}) {
    EXPECT_EQ(errorOf([&value] { toDate(value); }), 6);
  }
}

TEST(Conversions, RefuseWhatIsNoSingleValue) {
  const struct {
    Variant value;
    int error;
  } rows[] = {{Variant::null(), 94}, {Variant::missing(), 13}, {Array{1}, 13}, {Array(), 13}, {Object(), 13}};
  for (const auto& [value, error] : rows) {
    const Variant& refused = value;
    EXPECT_EQ(errorOf([&refused] { toText(refused); }), error);
    EXPECT_EQ(errorOf([&refused] { toDouble(refused); }), error);
    EXPECT_EQ(errorOf([&refused] { toInt16(refused); }), error);
    EXPECT_EQ(errorOf([&refused] { toInt32(refused); }), error);
    EXPECT_EQ(errorOf([&refused] { toBoolean(refused); }), error);
    EXPECT_EQ(errorOf([&refused] { toCurrency(refused); }), error);
    EXPECT_EQ(errorOf([&refused] { toDate(refused); }), error);
  }
}

}  // namespace zentaro::conversions_test
