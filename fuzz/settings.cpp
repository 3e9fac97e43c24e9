// A settings file, and a change to it: text NUL section NUL key NUL value.
#include <algorithm>
#include <stdexcept>

#include "check.h"
#include "platform/settings_text.h"
#include "text/ascii.h"

namespace {

using namespace zentaro;
using fuzz::require;

bool isSame(const SettingsText::Entry& entry, std::string_view section, std::string_view key) {
  return equalIgnoringCase(entry.section, section) && equalIgnoringCase(entry.key, key);
}

// In the order of the file.
std::vector<std::string> othersThan(const SettingsText& settings, std::string_view section,
                                    std::string_view key) {
  std::vector<std::string> others;
  for (const SettingsText::Entry& entry : settings.entries())
    if (!isSame(entry, section, key)) others.push_back(entry.section + '\0' + entry.key + '\0' + entry.value);
  return others;
}

void change(SettingsText settings, std::string_view section, std::string_view key, std::string_view value) {
  const std::string before = settings.text();
  const std::vector<std::string> others = othersThan(settings, section, key);
  try {
    settings.set(section, key, value);
  } catch (const std::invalid_argument&) {
    require(settings.text() == before, "a change that is refused changes nothing");
    return;
  }
  const SettingsText reloaded(settings.text());
  require(reloaded.value(section, key) == value, "a value that was set is read back");
  std::vector<std::string> now = othersThan(reloaded, section, key);
  require(now == others, "all other values stay");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto parts = fuzz::split(fuzz::textOf(data, size), '\0');
  const SettingsText settings(parts[0]);
  const auto entries = settings.entries();
  for (const SettingsText::Entry& entry : entries) {
    const auto last = std::find_if(entries.rbegin(), entries.rend(), [&](const auto& other) {
      return isSame(other, entry.section, entry.key);
    });
    require(settings.value(entry.section, entry.key) == last->value, "the last of equal keys holds");
  }
  require(SettingsText(settings.text()).text() == settings.text(), "text and settings are one");
  if (parts.size() > 3) change(settings, parts[1], parts[2], parts[3]);
  return 0;
}
