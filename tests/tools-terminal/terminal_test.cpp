// Texts for people: which language, what is made harmless, and lines that fit the screen.
#include <gtest/gtest.h>

#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "base/terminal/screen.h"

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
                         Row{"\xC2\x9F\xC2\x80", "\\x9F\\x80"}, Row{"\xC3", "\\xC3"}, Row{"\xC3(", "\\xC3("},
                         Row{"\xC2\xA0", "\xC2\xA0"}}) {
    EXPECT_EQ(harmless(row.text), row.clean);
  }
  EXPECT_EQ(harmlessLines("a\nb\r\n"), "a\nb\\x0D\n");
}

TEST(Language, IsSpanishOnlyForSpanishLocales) {
  for (const char* name : {"es", "es_VE.UTF-8", "es-VE", "es@euro", "es.UTF-8"}) {
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

TEST(Paragraphs, BreakAtBlanksWhatPeopleReadAndNothingElse) {
  struct Row {
    std::string written;
    const char* shown;
  };
  for (const Row& row :
       {Row{"uno dos tres cuatro cinco\nseis\n", "uno dos tres cuatro\ncinco\nseis\n"},
        Row{"ñandú año peñón añil\n", "ñandú año peñón añil\n"},
        Row{"  ! uno dos tres cuatro\n", "  ! uno dos tres\n      cuatro\n"},
        Row{"  a           |    b  \n", "  a           |    b  \n"},
        Row{"\x1B[1muno dos tres cuatro\x1B[0m x\n", "\x1B[1muno dos tres cuatro\x1B[0m\nx\n"},
        Row{"      -> " + whole("zentaro call --port 1 Reset") + "\n",
            "      -> zentaro call --port 1 Reset\n"},
        Row{"      -> " + whole("zentaro x") + " tres cuatro\n",
            "      -> zentaro x\n          tres\n          cuatro\n"},
        Row{"lea el manual, " + quoted("zentaro x") + "\n", "lea el manual,\n\"zentaro x\"\n"},
        Row{withCommands("uno dos tres cuatro cinco:\n    zentaro uno dos tres\nuno dos tres cuatro x"),
            "uno dos tres cuatro\ncinco:\n    zentaro uno dos tres\nuno dos tres cuatro\nx"},
        Row{whole("{\"a\": \"uno dos tres cuatro\"}\n") + "uno dos tres cuatro x\n",
            "{\"a\": \"uno dos tres cuatro\"}\nuno dos tres cuatro\nx\n"},
        Row{"  \"uno\", \"dos\", \"tres\"\n", "  \"uno\", \"dos\",\n      \"tres\"\n"},
        Row{"un_nombre_sin_blancos_largo\n", "un_nombre_sin_blancos_largo\n"}, Row{"sin fin", "sin fin"}}) {
    std::stringbuf screen;
    Paragraphs(screen, 20).sputn(row.written.data(), static_cast<std::streamsize>(row.written.size()));
    EXPECT_EQ(screen.str(), row.shown);
    std::stringbuf file;
    Paragraphs lines(file, std::nullopt);
    std::ostream(&lines) << row.written << row.written[0];
    EXPECT_EQ(file.str(), plain(row.written + row.written[0])) << "nothing is broken where nobody looks";
  }
  std::stringbuf screen;
  Paragraphs lines(screen, 20);
  std::ostream(&lines) << "  Enter: " << std::flush;
  EXPECT_EQ(screen.str(), "  Enter: ") << "somebody is to type behind it";
}

TEST(Layout, WrapsAtTheLastBlankThatLeavesTheLineWhole) {
  using Lines = std::vector<std::string>;
  EXPECT_EQ(wrapped("aaaa bbbbb cc", 10, "> "), (Lines{"aaaa bbbbb", "> cc"}));
  EXPECT_EQ(wrapped("aaaa bbbbbb cc", 10, "> "), (Lines{"aaaa", "> bbbbbb", "> cc"}));
  EXPECT_EQ(wrapped("ñandú años", 10, ""), Lines{"ñandú años"});
  EXPECT_EQ(wrapped("aaaaaaaaaaaa", 10, "> "), (Lines{"aaaaaaaaaa", "> aa"}));
}

}  // namespace zentaro::terminal
