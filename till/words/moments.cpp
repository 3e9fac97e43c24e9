// Moments through the system's calendar.
#include "till/words/moments.h"

#include <ctime>

#include "base/system/calendar.h"

namespace zentaro::till {

namespace {

// Spelled out: not every system knows the short forms.
constexpr const char *day = "%Y-%m-%d", *dayAndMinute = "%Y-%m-%d %H:%M";

std::string formed(const std::tm& parts, const char* form) {
  std::string text(40, '\0');
  text.resize(std::strftime(text.data(), text.size(), form, &parts));
  return text;
}

std::string here(Moment at, const char* form) { return formed(system::localParts(at), form); }

}  // namespace

std::string momentText(Moment at) {
  const bool isToday = here(at, day) == here(std::time(nullptr), day);
  return here(at, isToday ? "%H:%M" : dayAndMinute);
}

std::string dayAndTime(Moment at) { return here(at, dayAndMinute); }

std::string isoMoment(Moment at) { return formed(system::utcParts(at), "%Y-%m-%dT%H:%M:%SZ"); }

}  // namespace zentaro::till
