// Moments through the system's calendar.
#include "till/words/moments.h"

#include <ctime>

#include "base/system/calendar.h"

namespace zentaro::till {

namespace {

std::string formed(const std::tm& parts, const char* form) {
  std::string text(40, '\0');
  text.resize(std::strftime(text.data(), text.size(), form, &parts));
  return text;
}

std::string here(Moment at, const char* form) { return formed(system::localParts(at), form); }

}  // namespace

std::string momentText(Moment at) {
  const bool isToday = here(at, "%F") == here(std::time(nullptr), "%F");
  return here(at, isToday ? "%H:%M" : "%F %H:%M");
}

std::string dayAndTime(Moment at) { return here(at, "%F %H:%M"); }

std::string isoMoment(Moment at) { return formed(system::utcParts(at), "%FT%TZ"); }

}  // namespace zentaro::till
