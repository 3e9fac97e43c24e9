// Regional settings from the environment.
#include "platform/posix/regional.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/bytes.h"
#include "support/scratch.h"
#include "text/unicode.h"

// Where LOCPATH is set, newlocale of glibc 2.36 never gives back the list of folders that it makes of it.
extern "C" const char* __lsan_default_suppressions() { return "leak:argz_add_sep"; }

namespace zentaro::testing::regional_test {

TEST(Regional, DateFormatsBecomeShortDatePatterns) {
  for (const auto& [format, pattern] : table(R"(
    %d/%m/%y => dd/mm/yy; %d/%m/%Y => dd/mm/yyyy; %-d.%-m.%Y => d.m.yyyy; %e-%m-%Y => d-mm-yyyy; %F => yyyy-mm-dd
    %D => mm/dd/yy; %Y. %m. %d. => yyyy. mm. dd.)"))
    EXPECT_EQ(posix::shortDatePattern(utf16(format)), utf16(pattern)) << format;
  for (const char16_t* unusable :
       {u"%d %b %Y", u"%Od.%Om.%Ey", u"%d/%m", u"%d/%d/%m/%Y", u"%d de %m de %Y", u"%m/%d/%y%", u""})
    EXPECT_FALSE(posix::shortDatePattern(unusable)) << utf8(unusable);
}

TEST(Regional, LocalesWithoutOwnFormatsGiveTheDefaults) {
  for (const char* locale : {"C", "POSIX", "C.UTF-8", "C.utf8", "xx_YY.UTF-8", "../../etc", ""}) {
    ::setenv("LC_ALL", locale, 1);
    const Regional regional = posix::regionalOfEnvironment();
    EXPECT_EQ(regional.decimalSeparator, u'.') << locale;
    EXPECT_EQ(regional.groupSeparator, u',') << locale;
    EXPECT_EQ(regional.shortDate, u"dd/mm/yyyy") << locale;
  }
  ::unsetenv("LC_ALL");
}

TEST(Regional, ALocalesOwnSeparatorsAndDateAreTaken) {
  const Scratch folder;
  for (const auto& [group, expected] : {std::pair{"", u'.'}, {".", u'.'}, {"<U00A0>", u'\u00A0'}}) {
    folder.write("source",
                 "LC_CTYPE\ncopy \"POSIX\"\nEND LC_CTYPE\nLC_TIME\ncopy \"es_VE\"\nEND LC_TIME\n"
                 "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \"" +
                     std::string(group) + "\"\ngrouping 3\nEND LC_NUMERIC\n");
    const std::string make =
        "cd " + (folder / "").string() +
        " && localedef -c -f ISO-8859-1 -i ./source ./made >log 2>&1; test -e made/LC_TIME";
    if (std::system(make.c_str()) != 0) GTEST_SKIP() << "no locale can be made (package locales is missing)";
    ::setenv("LOCPATH", (folder / "").c_str(), 1);
    ::setenv("LC_ALL", "made", 1);
    ::setenv("LC_NUMERIC", "C", 1);
    const Regional regional = posix::regionalOfEnvironment();
    EXPECT_EQ(regional.decimalSeparator, u',') << "not as LC_NUMERIC says";
    EXPECT_EQ(regional.groupSeparator, expected) << group;
    EXPECT_EQ(regional.shortDate, u"dd/mm/yy");
    std::filesystem::remove_all(folder / "made");
  }
  for (const char* name : {"LOCPATH", "LC_ALL", "LC_NUMERIC"}) ::unsetenv(name);
}

}  // namespace zentaro::testing::regional_test
