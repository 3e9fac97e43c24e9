// The value that counts, of several files.
#include "platform/system_paths.h"
#include "tools/settings/settings_file.h"

namespace zentaro::tools {

std::optional<SettingInForce> settingInForce(std::string_view section, std::string_view key) {
  for (const std::string& path : settingsPaths())
    if (auto value = SettingsFile(path).settings().value(section, key))
      return SettingInForce{*std::move(value), path == systemSettingsPath()};
  return std::nullopt;
}

}  // namespace zentaro::tools
