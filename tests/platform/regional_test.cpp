// Regional settings from the environment.
#include "platform/posix/regional.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace zentaro::testing {
namespace {

TEST(Regional, DateFormatsBecomeShortDatePatterns) {
  struct Row {
    const char16_t *format, *pattern;  // an empty pattern: not usable
  };
  for (const Row& row : {Row{u"%d/%m/%y", u"dd/mm/yy"},
                         {u"%d/%m/%Y", u"dd/mm/yyyy"},
                         {u"%-d.%-m.%Y", u"d.m.yyyy"},
                         {u"%e-%m-%Y", u"d-mm-yyyy"},
                         {u"%F", u"yyyy-mm-dd"},
                         {u"%D", u"mm/dd/yy"},
                         {u"%Y. %m. %d.", u"yyyy. mm. dd."},
                         {u"%d %b %Y", u""},
                         {u"%Od.%Om.%Ey", u""},
                         {u"%d/%m", u""},
                         {u"%d/%d/%m/%Y", u""},
                         {u"%d de %m de %Y", u""},
                         {u"%m/%d/%y%", u""},
                         {u"", u""}}) {
    const auto pattern = posix::shortDatePattern(row.format);
    EXPECT_EQ(pattern.value_or(u""), row.pattern);
    EXPECT_EQ(pattern.has_value(), *row.pattern != u'\0');
  }
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

}  // namespace
}  // namespace zentaro::testing
