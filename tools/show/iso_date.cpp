// Dates in ISO form, read strictly: what is no such date stays a text.
#include "tools/show/iso_date.h"

#include "automation/automation_error.h"
#include "text/ascii.h"

namespace zentaro::tools {

namespace {

constexpr std::string_view dayForm = "0000-00-00";
constexpr std::string_view fullForm = "0000-00-00T00:00:00";

// A "0" of the form stands for any digit; every other character for itself.
bool hasForm(std::string_view text, std::string_view form) {
  if (text.size() != form.size()) return false;
  for (std::size_t index = 0; index < form.size(); ++index) {
    const bool fits = form[index] == '0' ? isAsciiDigit(text[index]) : text[index] == form[index];
    if (!fits) return false;
  }
  return true;
}

int number(std::string_view digits) {
  int value = 0;
  for (const char digit : digits) value = value * 10 + (digit - '0');
  return value;
}

}  // namespace

std::optional<Date> dateFromIso(std::string_view text) {
  const bool hasTime = hasForm(text, fullForm);
  if (!hasTime && !hasForm(text, dayForm)) return std::nullopt;
  CalendarTime parts{number(text.substr(0, 4)), number(text.substr(5, 2)), number(text.substr(8, 2))};
  if (hasTime) {
    parts.hour = number(text.substr(11, 2));
    parts.minute = number(text.substr(14, 2));
    parts.second = number(text.substr(17, 2));
  }
  try {
    return dateOf(parts);
  } catch (const AutomationError&) {
    return std::nullopt;  // 30 February and the like
  }
}

}  // namespace zentaro::tools
