// The settings file: what a reader sees, and that writing loses nothing.
#include "platform/settings_text.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/bytes.h"

namespace zentaro::settings_text_test {

TEST(SettingsTexts, AreReadLineByLine) {
  const SettingsText settings(
      "\xEF\xBB\xBF[Config\\EPSONZT]\r\n"
      "TimeOutZT=12\r\n"
      "  Indented=1\n"
      "DebugZT= 0\n"
      "DumpZT = \"C:\\IFTRACE.TXT\"\n"
      "Spaced =  two blanks  \n"
      "Tight =x\n"
      "Quote=\"\n"
      "Equals=a=b\n"
      "Empty=\n"
      ";Comment=1\n"
      "=nameless\n"
      "not a setting\n"
      "[half a section\n"
      "[ Other ]\n"
      "timeoutzt=1\n"
      "TimeOutZT=2\n"
      "[config\\epsonzt]\n"
      "Again=\"\"");
  const auto value = [&](const char* key) { return settings.value("config\\EPSONZT", key); };
  for (const auto& [key, expected] : testing::table(R"(
    TIMEOUTzt => 12; Indented => 1; DebugZT =>  0; DumpZT => C:\IFTRACE.TXT; Spaced =>  two blanks  ; Tight => x
    Quote => "; Equals => a=b)"))
    EXPECT_EQ(value(key.c_str()), expected) << key;
  EXPECT_EQ(value("Empty"), "");
  EXPECT_EQ(value("Again"), "");
  EXPECT_EQ(value(";Comment"), std::nullopt);
  EXPECT_EQ(value(""), std::nullopt);
  EXPECT_EQ(settings.value("Other", "TimeOutZT"), "2");
  EXPECT_EQ(settings.value("Other", "DebugZT"), std::nullopt);
  EXPECT_EQ(settings.value("Nowhere", "TimeOutZT"), std::nullopt);

  const auto entries = settings.entries();
  ASSERT_EQ(entries.size(), 12U);
  EXPECT_EQ(entries[9].section, "Other");
  EXPECT_EQ(entries[9].key, "timeoutzt");
  EXPECT_EQ(entries[9].value, "1");
}

TEST(SettingsTexts, ChangeOneLine) {
  const struct {
    const char *row, *before, *key, *value, *after;
  } rows[] = {
      {"in its place", "; first\n[S]\nA=1\n\nB=2\n", "A", "9", "; first\n[S]\nA=9\n\nB=2\n"},
      {"with its spacing", "[S]\n a = \"1\"\n", "A", "9", "[S]\n a = 9\n"},
      {"a missing blank", "[S]\nA =1\n", "A", "9", "[S]\nA = 9\n"},
      {"with its line end", "[S]\r\nA=1\r\nB=2\r\n", "A", "9", "[S]\r\nA=9\r\nB=2\r\n"},
      {"the one that holds", "[S]\nA=1\nA=2\n", "A", "9", "[S]\nA=1\nA=9\n"},
      {"a new key behind the last", "[S]\nA=1\n\n[T]\nC=3\n", "B", "2", "[S]\nA=1\nB=2\n\n[T]\nC=3\n"},
      {"a new section at the end", "[T]\r\nnonsense", "A", "1", "[T]\r\nnonsense\n[S]\r\nA=1\r\n"},
      {"an empty section", "[S]\n\n[T]\n", "A", "1", "[S]\nA=1\n\n[T]\n"},
      {"an empty file", "", "A", "1", "[S]\nA=1\n"},
  };
  for (const auto& row : rows) {
    SettingsText settings(row.before);
    settings.set("S", row.key, row.value);
    EXPECT_EQ(settings.text(), row.after) << row.row;
  }
}

TEST(SettingsTexts, AddToWhatPrecedesTheFirstSection) {
  SettingsText settings("[S]\nA=1\n");
  settings.set("", "B", "2");
  EXPECT_EQ(settings.text(), "B=2\n[S]\nA=1\n");
}

TEST(SettingsTexts, GiveBackWhatWasSet) {
  for (const char* value : {"", " ", " x ", "\"", "\"\"", "\"C:\\X.TXT\"", "a=b", ";x", "[x]", "\xC3\xB1"}) {
    for (const char* before : {"", "[S]\nA=1\n", "[S]\nA = 1\n", "[S]\nA =1\n", "[S]\r\nA=\r\n"}) {
      SettingsText settings(before);
      settings.set("S", "A", value);
      EXPECT_EQ(SettingsText(settings.text()).value("S", "A"), value) << before << value;
    }
  }
}

TEST(SettingsTexts, RefuseWhatALineCannotHold) {
  SettingsText settings("[S]\nA=1\n");
  const struct {
    const char *section, *key, *value;
  } rows[] = {{"S", "A", "1\n2"}, {"S", "A", "1\r"}, {"S\n", "A", "1"}, {" S", "A", "1"}, {"S", "", "1"},
              {"S", "A=B", "1"},  {"S", "[A", "1"},  {"S", ";A", "1"},  {"S", "A ", "1"}, {"S", "A\nB", "1"}};
  for (const auto& row : rows) {
    EXPECT_THROW(settings.set(row.section, row.key, row.value), std::invalid_argument) << row.key;
  }
  EXPECT_EQ(settings.text(), "[S]\nA=1\n");
}

}  // namespace zentaro::settings_text_test
