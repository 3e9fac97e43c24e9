// Looking at the ports of the settings.
#include "tools/setup/changes.h"

#include <filesystem>

#include "base/files/paths.h"
#include "tools/connection/known_settings.h"

namespace zentaro::tools {

namespace {

std::string target(const std::string& path) {
  std::error_code failed;
  const std::filesystem::path real = std::filesystem::canonical(files::pathOf(path), failed);
  return failed ? path : files::textOf(real);
}

}  // namespace

std::optional<PortChoice> portFor(const std::string& device, const SettingsText& settings) {
  std::optional<PortChoice> unused;
  for (int port = 1; port <= portCount; ++port) {
    const std::string path = settings.value(portSection, portKey(port)).value_or("");
    if (!path.empty() && target(path) == target(device)) return PortChoice{portKey(port), true};
    if (path.empty() && !unused) unused = PortChoice{portKey(port)};
  }
  return unused;
}

}  // namespace zentaro::tools
