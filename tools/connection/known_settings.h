// Every setting that a user can change: those that the library reads by key, and the devices of the ports.
#pragma once

#include <string>
#include <vector>

#include "platform/setting_keys.h"

namespace zentaro::tools {

inline constexpr int portCount = 8;

/// The section and key under which a port's device is set.
inline constexpr std::string_view portSection = settingDriverTrace.section;
inline std::string portKey(int port) { return "COM" + std::to_string(port); }

struct KnownSetting {
  std::string section, key, fallback, meaning;
  int lowest = 0, highest = -1;  // of a value that must be a whole number; highest < lowest for any text
};

std::vector<KnownSetting> knownSettings();

/// Whether the value is a whole number in the setting's range, for a setting that must be one.
bool isAcceptable(const KnownSetting& setting, const std::string& value);

}  // namespace zentaro::tools
