// Hexadecimal, fixed-length and packed-date texts, and the tokenizer, as far as the frames do not show them.
#include <gtest/gtest.h>

#include <thread>

#include "support/values.h"
#include "text/unicode.h"
#include "util/general.h"
#include "util/lm_hex_str.h"
#include "util/lm_string_lib.h"
#include "util/lm_strtok.h"

namespace zentaro::testing::helpers_test {

TEST(HexStr, IsUpperCaseOfAtLeastTheWidthAndNeverCut) {
  using lmHexStr::HexDigit;
  using lmHexStr::HexStr;
  EXPECT_EQ(HexDigit(9) + HexDigit(10) + HexDigit(15) + HexDigit(-1), u"9AF-1");
  EXPECT_EQ(HexStr(0, 0), u"0");
  EXPECT_EQ(HexStr(16, -1), u"10");
  EXPECT_EQ(HexStr(-1, 4), u"FFFFFFFF");
  EXPECT_EQ(HexStr(INT32_MIN, 1), u"80000000");
}

TEST(FixLen, CutsAndPads) {
  EXPECT_EQ(lmStringLib::FixLen(u"abc", 5) + lmStringLib::FixLen(u"", 2) + u"|", u"abc    |");
  EXPECT_EQ(lmStringLib::FixLen(u"abcdef", 4), u"abcd");
}

TEST(Tokens, AreNeverEmptyAndRememberedForEachThread) {
  EXPECT_EQ(lmstrtok(u".a,,b;c", u",."), u"a");
  std::thread([] {
    EXPECT_EQ(errorOf([] { lmstrtok(u"", u","); }), 5) << "nothing to split yet";
    EXPECT_EQ(lmstrtok(u"x,y", u""), u"x,y");
  }).join();
  EXPECT_EQ(lmstrtok(u"", u";"), u",b") << "with other delimiters; the one that ended a token is gone";
  EXPECT_EQ(lmstrtok(u"new-.", u";-."), u"new") << "a new text takes over";
  EXPECT_EQ(lmstrtok(u"", u"-."), u"");
  EXPECT_EQ(lmstrtok(u"", u"-."), u"") << "the text stays used up";
}

TEST(PackedDate, IsOfThisCenturyAndWithoutSeconds) {
  FakePlatform platform;
  platform.regional.settings.shortDate = u"mm/dd/yyyy";
  const auto packed = [](const char16_t* date, const char16_t* time) {
    return textOrError([&] { return utf16(isoText(General::MakeDateTime(date, time))); });
  };
  EXPECT_EQ(packed(u"991231", u"000059"), "2099-12-31T00:00:00");
  EXPECT_EQ(packed(u"24010031", u"2359"), "2024-01-31T23:59:00") << "the last pair is the day";
  for (const char16_t* date : {u"", u"24", u"230229", u"ABCDEF"})
    EXPECT_EQ(packed(date, u"1405"), "error 13");
  for (const char16_t* time : {u"", u"1", u"2505"}) EXPECT_EQ(packed(u"240131", time), "error 13");
}

}  // namespace zentaro::testing::helpers_test
