// Unicode, the code page, and the settings text of a line.
#include <gtest/gtest.h>

#include "platform/line_settings.h"
#include "text/code_page.h"
#include "text/unicode.h"

namespace zentaro::platform_texts_test {

TEST(Unicode, EveryCharacterSurvivesTheWayThereAndBack) {
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (character >= 0xD800 && character <= 0xDFFF) continue;
    std::u16string text;
    if (character >= 0x10000) text += static_cast<char16_t>(0xD7C0 + (character >> 10));
    text += static_cast<char16_t>(character >= 0x10000 ? 0xDC00 + (character & 0x3FF) : character);
    ASSERT_EQ(utf16(utf8(text)), text) << static_cast<unsigned>(character);
  }
  EXPECT_EQ(utf8(u"\u00F1\u20AC\U0001F600"), "\xC3\xB1\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(Unicode, MalformedBytesBecomeTheReplacementCharacter) {
  const std::pair<std::string_view, std::u16string_view> rows[] = {
      {"a\x80z", u"a\uFFFDz"},                            // a stray continuation
      {"a\xE2\x82", u"a\uFFFD"},                          // cut short at the end
      {"\xE2\x82z", u"\uFFFDz"},                          // by another character
      {"\xF0\x9F\xC3\xB1", u"\uFFFD\u00F1"},              // by a whole sequence
      {"\xC0\xAF", u"\uFFFD\uFFFD"},                      // overlong
      {"\xE0\x80\xAF", u"\uFFFD\uFFFD\uFFFD"},            // overlong
      {"\xF0\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // overlong
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // above the last character
      {"\xFF\xFE", u"\uFFFD\uFFFD"}};
  for (const auto& [bytes, text] : rows) EXPECT_EQ(utf16(bytes), text) << utf8(text);
}

TEST(Unicode, LoneSurrogatesBecomeTheReplacementCharacter) {
  const char16_t high = 0xD83D, low = 0xDE00;
  EXPECT_EQ(utf8(std::u16string{high}), "\xEF\xBF\xBD");
  EXPECT_EQ(utf8(std::u16string{low, high}), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(utf8(std::u16string{high, high, low}), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

TEST(CodePages, EveryByteSurvivesTheWayThereAndBack) {
  const CodePage& page = windows1252();
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(page.bytes(page.text(all)), all);
  EXPECT_EQ(page.text("\x80\x81\x8D\x8F\x90\x9D\x9F\xA0\xF1\xFF"),
            u"\u20AC\x81\x8D\x8F\x90\x9D\u0178\u00A0\u00F1\u00FF");
  EXPECT_EQ(page.text("\x8E\x92\x96\x99"), u"\u017D\u2019\u2013\u2122");
}

TEST(CodePages, CharactersOutsideBecomeQuestionMarks) {
  EXPECT_EQ(windows1252().bytes(u"a\u0100\u0080\uFFFDz"), "a???z");
  EXPECT_EQ(windows1252().bytes(u"\U0001F600"), "??") << "one byte for each code unit";
}

LineSettings linesBefore() {
  LineSettings settings;
  settings.baudRate = 1200;
  settings.parity = 'E';
  settings.dataBits = 7;
  settings.stopBits = 2;
  settings.native[5] = std::byte{42};
  return settings;
}

TEST(LineSettingsText, ChangesWhatItNames) {
  LineSettings settings = linesBefore();
  ASSERT_TRUE(parseLineSettings("baud=9600 parity=N data=8 stop=1", settings));
  EXPECT_EQ(settings.baudRate, 9600U);
  EXPECT_EQ(settings.parity, 'N');
  EXPECT_EQ(settings.dataBits, 8);
  EXPECT_EQ(settings.stopBits, 1);
  EXPECT_FALSE(settings.flowControl);
  EXPECT_EQ(settings.native, linesBefore().native);

  settings = linesBefore();
  ASSERT_TRUE(parseLineSettings("  PARITY=o\t ", settings));
  EXPECT_EQ(settings.parity, 'O');
  EXPECT_EQ(settings.baudRate, 1200U);
  EXPECT_EQ(settings.stopBits, 2);
}

TEST(LineSettingsText, IsRefusedAsAWhole) {
  for (const char* text : {"baud=9600 speed=1", "baud=9600 parity=X", "baud=0", "baud=-1", "baud=9600x",
                           "baud=", "baud 9600", "baud=99999999999", "data=4", "data=9", "stop=3", "stop=1.5",
                           "parity=NO", "parity=", "nonsense", "=", "baud=9600,data=8", "baud = 9600"}) {
    LineSettings settings = linesBefore();
    EXPECT_FALSE(parseLineSettings(text, settings)) << text;
    EXPECT_EQ(settings.baudRate, 1200U) << text;
    EXPECT_EQ(settings.parity, 'E') << text;
    EXPECT_TRUE(settings.flowControl) << text;
  }
}

}  // namespace zentaro::platform_texts_test
