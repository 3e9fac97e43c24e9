// Texts for people: which language, and what is made harmless.
#include <gtest/gtest.h>

#include "terminal/harmless.h"
#include "terminal/language.h"

namespace zentaro::terminal {

TEST(Harmless, LeavesNoControlCharacterAndNoBrokenByte) {
  struct Row {
    const char* text;
    const char* clean;
  };
  for (const Row& row : {Row{"Peñalver 10 €", "Peñalver 10 €"}, Row{"\x1B[2J", "\\x1B[2J"},
                         Row{"a\tb\x7F\n", "a\\x09b\\x7F\\x0A"},
                         Row{"\xC2\x9B"
                             "31m",
                             "\\x9B31m"},
                         Row{"\x9B"
                             "31m\xF0\x9F\x98\x80",
                             "\\x9B31m\xF0\x9F\x98\x80"},
                         Row{"\xC3", "\\xC3"}, Row{"\xC3(", "\\xC3("}, Row{"\xC2\xA0", "\xC2\xA0"}}) {
    EXPECT_EQ(harmless(row.text), row.clean);
  }
  EXPECT_EQ(harmlessLines("a\nb\r\n"), "a\nb\\x0D\n");
}

TEST(Language, IsSpanishOnlyForSpanishLocales) {
  for (const char* name : {"es", "es_VE.UTF-8", "es@euro", "es.UTF-8"}) {
    EXPECT_EQ(languageNamed(name), Language::Spanish) << name;
  }
  for (const char* name : {"", "C", "en_US", "est_EE", "e"}) {
    EXPECT_EQ(languageNamed(name), Language::English) << name;
  }
  chooseLanguage(Language::Spanish);
  EXPECT_EQ(say("la venta {} fue la {}", "sale {} was {}", {"A{}", "7"}), "la venta A{} fue la 7");
  chooseLanguage(Language::English);
  EXPECT_EQ(say("la venta {}", "sale {}", {}), "sale {}");
}

}  // namespace zentaro::terminal
