// Regional settings from the environment.
#include "platform/posix/regional.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/bytes.h"
#include "text/unicode.h"

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

}  // namespace zentaro::testing::regional_test
