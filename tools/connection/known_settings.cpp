// The list of settings.
#include "tools/connection/known_settings.h"

#include <charconv>
#include <limits>

#include "platform/system_paths.h"
#include "text/unicode.h"

namespace zentaro::tools {

namespace {

KnownSetting known(const SettingKey& setting) {
  KnownSetting result{std::string(setting.section), std::string(setting.key), utf8(setting.fallback),
                      std::string(setting.meaning)};
  const bool isCount = setting.key == settingTimeOut.key || setting.key == settingDescriptionLength.key;
  if (isCount) result.lowest = 1;
  if (isCount || setting.key == settingSuppressDecimals.key)
    result.highest = std::numeric_limits<std::int16_t>::max();
  return result;
}

}  // namespace

std::vector<KnownSetting> knownSettings() {
  std::vector<KnownSetting> settings;
  settings.reserve(allSettings.size() + portCount);
  for (const SettingKey& setting : allSettings) settings.push_back(known(setting));
  for (int port = 1; port <= portCount; ++port) {
    settings.push_back({std::string(portSection), portKey(port), ownDevice(port),
                        "device of serial port " + std::to_string(port)});
  }
  return settings;
}

bool isAcceptable(const KnownSetting& setting, const std::string& value) {
  if (setting.highest < setting.lowest) return true;
  int number = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
  const bool isWhole = error == std::errc() && end == value.data() + value.size();
  return isWhole && number >= setting.lowest && number <= setting.highest;
}

}  // namespace zentaro::tools
