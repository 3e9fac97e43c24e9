// The user's regional settings, as far as texts depend on them.
#pragma once

#include <string>
#include <string_view>

namespace zentaro {

struct Regional {
  char16_t decimalSeparator = u'.';
  char16_t groupSeparator = u',';
  std::u16string shortDate = u"dd/mm/yyyy";  // from the parts d, dd, m, mm, yy, yyyy and separators
};

/// True for a pattern made of one day, one month and one year in digits, with separators between them.
bool isShortDate(std::u16string_view pattern);

class RegionalSettings {
 public:
  virtual ~RegionalSettings() = default;
  virtual Regional current() = 0;
};

}  // namespace zentaro
