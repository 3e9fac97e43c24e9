// Hexadecimal, fixed-length and packed-date texts, and the tokenizer.
#include <gtest/gtest.h>

#include <thread>

#include "automation/automation_error.h"
#include "platform/unicode.h"
#include "support/fakes.h"
#include "util/general.h"
#include "util/lm_hex_str.h"
#include "util/lm_string_lib.h"
#include "util/lm_strtok.h"

namespace zentaro::testing {
namespace {

/// The number of the automation error that `call` raises; 0 for none.
template <class Call>
int errorOf(Call call) {
  try {
    call();
  } catch (const AutomationError& error) {
    return error.number();
  }
  return 0;
}

TEST(HexStr, IsUpperCaseOfAtLeastTheWidthAndNeverCut) {
  struct Row {
    std::int32_t value;
    std::int16_t width;
    const char16_t* text;
  };
  for (const Row& row : {Row{111, 4, u"006F"},
                         {0, 4, u"0000"},
                         {0, 0, u"0"},
                         {255, 2, u"FF"},
                         {109517, 4, u"1ABCD"},
                         {16, -1, u"10"},
                         {0x7FFFFFFF, 2, u"7FFFFFFF"},
                         {-1, 4, u"FFFFFFFF"},
                         {INT32_MIN, 1, u"80000000"}}) {
    EXPECT_EQ(lmHexStr::HexStr(row.value, row.width), row.text);
  }
  EXPECT_EQ(lmHexStr::HexDigit(9) + lmHexStr::HexDigit(10) + lmHexStr::HexDigit(15), u"9AF");
}

TEST(FixLen, CutsOrFills) {
  EXPECT_EQ(lmStringLib::FixLen(u"abc", 5), u"abc  ");
  EXPECT_EQ(lmStringLib::FixLen(u"abcdef", 4), u"abcd");
  EXPECT_EQ(lmStringLib::FixLen(u"", 3), u"   ");
  EXPECT_EQ(lmStringLib::FixLen(u"abc", 0), u"");
  EXPECT_EQ(errorOf([] { lmStringLib::FixLen(u"abc", -1); }), 5);
}

std::vector<std::u16string> tokens(const std::u16string& text, const std::u16string& delimiters) {
  std::vector<std::u16string> all;
  for (auto token = lmstrtok(text, delimiters); !token.empty(); token = lmstrtok(u"", delimiters))
    all.push_back(token);
  EXPECT_EQ(lmstrtok(u"", delimiters), u"") << "the text stays used up";
  return all;
}

TEST(Tokens, AreNeverEmpty) {
  using Texts = std::vector<std::u16string>;
  const std::u16string marks = u"\x1C\x03";
  EXPECT_EQ(tokens(u"A\x1C\x1C"
                   u"B\x03"
                   u"1F2E",
                   marks),
            (Texts{u"A", u"B", u"1F2E"}));
  EXPECT_EQ(tokens(u"\x1C"
                   u"A\x1C",
                   marks),
            (Texts{u"A"}));
  EXPECT_EQ(tokens(u"\x1C\x03", marks), (Texts{}));
  EXPECT_EQ(tokens(u"A\x1C"
                   u"B",
                   u""),
            (Texts{u"A\x1C"
                   u"B"}));
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
  const auto isoDate = [](const char16_t* date, const char16_t* time) {
    return isoText(General::MakeDateTime(date, time));
  };
  EXPECT_EQ(isoDate(u"240131", u"140559"), "2024-01-31T14:05:00");
  EXPECT_EQ(isoDate(u"991231", u"0000"), "2099-12-31T00:00:00");
  EXPECT_EQ(isoDate(u"000229", u"2359"), "2000-02-29T23:59:00");
  struct Row {
    const char16_t *date, *time;
  };
  for (const Row& row : {Row{u"", u""},
                         {u"241331", u"1405"},
                         {u"240131", u"2505"},
                         {u"240131", u""},
                         {u"", u"1405"},
                         {u"230229", u"1405"},
                         {u"2401", u"1"},
                         {u"ABCDEF", u"1405"}}) {
    EXPECT_EQ(errorOf([&] { General::MakeDateTime(row.date, row.time); }), 13)
        << utf8(row.date) << " " << utf8(row.time);
  }
}

}  // namespace
}  // namespace zentaro::testing
