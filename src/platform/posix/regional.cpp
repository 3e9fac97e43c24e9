// Reads number and date formats from the system's locale data, one category at a time.
#include "platform/posix/regional.h"

#include <langinfo.h>
#include <locale.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "platform/posix/posix_services.h"
#include "text/ascii.h"
#include "text/unicode.h"

namespace zentaro::posix {
namespace {

class Locale {
 public:
  /// The environment's locale for one category, "LC_TIME" and its mask; none for an unknown one and for C.
  Locale(const char* category, int mask) {
    const std::string name = nameFor(category);
    if (name.empty() || name == "C" || name == "POSIX" || name.starts_with("C.")) return;
    locale_ = ::newlocale(mask | LC_CTYPE_MASK, name.c_str(), locale_t{});
  }
  ~Locale() {
    if (isKnown()) ::freelocale(locale_);
  }
  Locale(const Locale&) = delete;
  Locale& operator=(const Locale&) = delete;

  bool isKnown() const { return locale_ != locale_t{}; }

  std::u16string text(nl_item item) const {
    const char* bytes = ::nl_langinfo_l(item, locale_);
    const bool isUtf8 = std::strcmp(::nl_langinfo_l(CODESET, locale_), "UTF-8") == 0;
    return isUtf8 ? utf16(bytes) : windows1252().text(bytes);
  }

 private:
  static std::string nameFor(const char* category) {
    for (const char* variable : {"LC_ALL", category, "LANG"}) {
      const char* value = std::getenv(variable);
      if (value != nullptr && *value != '\0') return value;
    }
    return {};
  }

  locale_t locale_{};
};

struct DatePart {
  std::u16string_view directive, pattern;
};
constexpr std::array<DatePart, 9> dateParts{{{u"%d", u"dd"},
                                             {u"%e", u"d"},
                                             {u"%-d", u"d"},
                                             {u"%m", u"mm"},
                                             {u"%-m", u"m"},
                                             {u"%y", u"yy"},
                                             {u"%Y", u"yyyy"},
                                             {u"%F", u"yyyy-mm-dd"},
                                             {u"%D", u"mm/dd/yy"}}};

}  // namespace

std::optional<std::u16string> shortDatePattern(std::u16string_view format) {
  std::u16string pattern;
  while (!format.empty()) {
    const auto part = std::ranges::find_if(
        dateParts, [&](const DatePart& candidate) { return format.starts_with(candidate.directive); });
    if (part != dateParts.end()) {
      pattern += part->pattern;
      format.remove_prefix(part->directive.size());
      continue;
    }
    if (format.front() == u'%' || isAsciiLetter(format.front())) return std::nullopt;
    pattern += format.front();
    format.remove_prefix(1);
  }
  return isShortDate(pattern) ? std::optional(pattern) : std::nullopt;
}

Regional regionalOfEnvironment() {
  Regional regional;
  if (const Locale numbers("LC_NUMERIC", LC_NUMERIC_MASK); numbers.isKnown()) {
    const std::u16string decimal = numbers.text(RADIXCHAR), group = numbers.text(THOUSEP);
    if (!decimal.empty()) regional.decimalSeparator = decimal.front();
    regional.groupSeparator = regional.decimalSeparator == u',' ? u'.' : u',';
    if (!group.empty()) regional.groupSeparator = group.front();
  }
  if (const Locale dates("LC_TIME", LC_TIME_MASK); dates.isKnown()) {
    if (const auto pattern = shortDatePattern(dates.text(D_FMT))) regional.shortDate = *pattern;
  }
  return regional;
}

namespace {

class EnvironmentRegional : public RegionalSettings {
 public:
  Regional current() override { return atStart_; }

 private:
  Regional atStart_ = regionalOfEnvironment();
};

}  // namespace

RegionalSettings& regionalSettings() { return lasting<EnvironmentRegional>(); }

}  // namespace zentaro::posix
