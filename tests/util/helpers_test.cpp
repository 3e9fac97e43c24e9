// Hexadecimal, fixed-length and packed-date texts, and the tokenizer.
#include <gtest/gtest.h>

#include <thread>

#include "text/unicode.h"
#include "util/general.h"
#include "util/lm_hex_str.h"
#include "util/lm_string_lib.h"
#include "util/lm_strtok.h"
#include "values/values.h"

namespace zentaro::testing {
namespace {

TEST(HexStr, IsUpperCaseOfAtLeastTheWidthAndNeverCut) {
  using lmHexStr::HexStr;
  EXPECT_EQ(HexStr(111, 4), u"006F");
  EXPECT_EQ(HexStr(0, 4), u"0000");
  EXPECT_EQ(HexStr(0, 0), u"0");
  EXPECT_EQ(HexStr(255, 2), u"FF");
  EXPECT_EQ(HexStr(109517, 4), u"1ABCD");
  EXPECT_EQ(HexStr(16, -1), u"10");
  EXPECT_EQ(HexStr(-1, 4), u"FFFFFFFF");
  EXPECT_EQ(HexStr(INT32_MIN, 1), u"80000000");
  EXPECT_EQ(lmHexStr::HexDigit(9) + lmHexStr::HexDigit(10) + lmHexStr::HexDigit(15), u"9AF");
}

TEST(FixLen, CutsOrFills) {
  EXPECT_EQ(lmStringLib::FixLen(u"abc", 5), u"abc  ");
  EXPECT_EQ(lmStringLib::FixLen(u"abcdef", 4), u"abcd");
  EXPECT_EQ(lmStringLib::FixLen(u"", 3), u"   ");
  EXPECT_EQ(lmStringLib::FixLen(u"abc", 0), u"");
  EXPECT_EQ(errorOf([] { lmStringLib::FixLen(u"abc", -1); }), 5);
}

/// The tokens with a "|" behind each.
std::u16string tokens(const std::u16string& text, const std::u16string& delimiters) {
  std::u16string all, token = lmstrtok(text, delimiters);
  for (; !token.empty(); token = lmstrtok(u"", delimiters)) all += token + u"|";
  EXPECT_EQ(lmstrtok(u"", delimiters), u"") << "the text stays used up";
  return all;
}

TEST(Tokens, AreNeverEmpty) {
  EXPECT_EQ(tokens(u"A--B.1F2E", u"-."), u"A|B|1F2E|");
  EXPECT_EQ(tokens(u".-A-", u"-."), u"A|");
  EXPECT_EQ(tokens(u"-.", u"-."), u"");
  EXPECT_EQ(tokens(u"A-B", u""), u"A-B|");
}

TEST(Tokens, AreRememberedForEachThread) {
  EXPECT_EQ(lmstrtok(u"a,b;c", u","), u"a");
  std::thread([] {
    EXPECT_EQ(errorOf([] { lmstrtok(u"", u","); }), 5) << "nothing to split yet";
    EXPECT_EQ(lmstrtok(u"x,y", u","), u"x");
  }).join();
  EXPECT_EQ(lmstrtok(u"", u";"), u"b") << "with other delimiters";
  EXPECT_EQ(lmstrtok(u"new", u";"), u"new") << "a new text takes over";
  EXPECT_EQ(lmstrtok(u"", u";"), u"");
}

TEST(PackedDate, IsOfThisCenturyAndWithoutSeconds) {
  FakePlatform platform;
  platform.regional.settings.shortDate = u"mm/dd/yyyy";
  const auto packed = [](const char16_t* date, const char16_t* time) {
    return textOrError([&] { return utf16(isoText(General::MakeDateTime(date, time))); });
  };
  EXPECT_EQ(packed(u"240131", u"140559"), "2024-01-31T14:05:00");
  EXPECT_EQ(packed(u"991231", u"0000"), "2099-12-31T00:00:00");
  EXPECT_EQ(packed(u"000229", u"2359"), "2000-02-29T23:59:00");
  for (const char16_t* date : {u"", u"241331", u"230229", u"24", u"ABCDEF"}) {
    EXPECT_EQ(packed(date, u"1405"), "error 13") << utf8(date);
  }
  for (const char16_t* time : {u"", u"1", u"2505"})
    EXPECT_EQ(packed(u"240131", time), "error 13") << utf8(time);
}

}  // namespace
}  // namespace zentaro::testing
