// Where the calling user's files belong: the folders of the XDG base directories, else the home.
#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

#include "platform/setting_keys.h"
#include "platform/system_paths.h"

namespace zentaro {
namespace {

/// Empty when the variable is not set.
std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

/// Empty when the variable holds no absolute path: a relative one would mean another folder in every
/// program, depending on where it was started.
std::string folderIn(const char* variable) {
  const std::string folder = environment(variable);
  return folder.starts_with('/') ? folder : "";
}

std::string homeDirectory() {
  if (std::string home = folderIn("HOME"); !home.empty()) return home;
  std::array<char, 4096> buffer{};
  passwd entry{};
  passwd* found = nullptr;
  const bool done =
      ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr;
  return done ? entry.pw_dir : "";
}

/// The folder that the variable names, else that folder in the user's home; empty without a home.
std::string userFolder(const char* variable, const char* folderAtHome) {
  if (std::string folder = folderIn(variable); !folder.empty()) return folder;
  const std::string home = homeDirectory();
  return home.empty() ? home : home + folderAtHome;
}

std::string settingsBelow(const std::string& folder) {
  return folder + "/" + std::string(settingsApplication) + "/settings.ini";
}

}  // namespace

std::string settingsPath() {
  if (std::string path = environment("ZENTARO_SETTINGS"); !path.empty()) return path;
  const std::string folder = userFolder("XDG_CONFIG_HOME", "/.config");
  return folder.empty() ? folder : settingsBelow(folder);
}

// Not $XDG_CONFIG_DIRS: a desktop sets it and a scheduled job does not, and both must see the same ports.
std::string systemSettingsPath() { return settingsBelow("/etc/xdg"); }

std::vector<std::string> settingsPaths() {
  std::vector<std::string> paths;
  if (std::string path = settingsPath(); !path.empty()) paths.push_back(std::move(path));
  if (environment("ZENTARO_SETTINGS").empty()) paths.push_back(systemSettingsPath());
  return paths;
}

std::string stateFolder() {
  const std::string folder = userFolder("XDG_STATE_HOME", "/.local/state");
  return folder.empty() ? folder : folder + "/zentaro";
}

}  // namespace zentaro
