// The user's regional settings, as they are when the library first needs them.
#include <algorithm>

#include "platform/windows/system.h"
#include "platform/windows/windows_services.h"

namespace zentaro::windows {
namespace {

std::u16string information(LCTYPE type) {
  wchar_t text[128] = {};
  ::GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, static_cast<int>(std::size(text)));
  return narrow(text);
}

Regional ofTheUser() {
  Regional regional;
  if (const auto separator = information(LOCALE_SDECIMAL); !separator.empty())
    regional.decimalSeparator = separator.front();
  if (const auto separator = information(LOCALE_STHOUSAND); !separator.empty())
    regional.groupSeparator = separator.front();
  std::u16string date = information(LOCALE_SSHORTDATE);
  std::ranges::replace(date, u'M', u'm');
  if (isShortDate(date)) regional.shortDate = date;
  return regional;
}

class UserRegional : public RegionalSettings {
 public:
  Regional current() override { return atStart_; }

 private:
  Regional atStart_ = ofTheUser();
};

}  // namespace

RegionalSettings& regionalSettings() { return lasting<UserRegional>(); }

}  // namespace zentaro::windows
