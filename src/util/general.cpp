// The packed texts become a year-month-day text, which reads alike under every regional setting.
#include "util/general.h"

#include <algorithm>

#include "automation/automation_error.h"
#include "automation/conversions.h"

namespace zentaro::General {
namespace {

/// Up to two characters from `position`, as many as there are.
std::u16string pairAt(const std::u16string& text, std::size_t position) {
  return text.substr(std::min(position, text.size()), 2);
}

std::u16string lastPair(const std::u16string& text) {
  return pairAt(text, text.size() - std::min<std::size_t>(2, text.size()));
}

std::u16string dayAndMinute(const std::u16string& dateText, const std::u16string& timeText) {
  return u"20" + pairAt(dateText, 0) + u"-" + pairAt(dateText, 2) + u"-" + lastPair(dateText) + u" " +
         pairAt(timeText, 0) + u":" + pairAt(timeText, 2);
}

Date convert(const std::u16string& isoForm) {
  const auto date = textToDate(isoForm);
  if (!date) throw AutomationError(ErrorNumber::TypeMismatch);
  return *date;
}

}  // namespace

Date MakeDateTime(const std::u16string& dateText, const std::u16string& timeText) {
  return convert(dayAndMinute(dateText, timeText));
}

Date MakeDateTimeWithSeconds(const std::u16string& dateText, const std::u16string& timeText) {
  return convert(dayAndMinute(dateText, timeText) + u":" + lastPair(timeText));
}

}  // namespace zentaro::General
