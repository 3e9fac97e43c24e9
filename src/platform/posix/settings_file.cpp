// The settings store: an INI file of the user, read again for every value so that a change is seen at once.
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>

#include <array>
#include <cstdlib>
#include <optional>

#include "platform/posix/descriptor.h"
#include "platform/posix/posix_services.h"
#include "platform/setting_keys.h"
#include "platform/settings_text.h"
#include "platform/system_paths.h"
#include "text/ascii.h"
#include "text/unicode.h"

namespace zentaro {
namespace {

constexpr off_t largestFile = 1 << 20;  // anything larger is no settings file

/// Empty when the variable is not set.
std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string homeDirectory() {
  if (std::string home = environment("HOME"); !home.empty()) return home;
  std::array<char, 4096> buffer{};
  passwd entry{};
  passwd* found = nullptr;
  const bool done =
      ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr;
  return done ? entry.pw_dir : "";
}

/// The folder that the variable names, else that folder in the user's home; empty without a home.
std::string userFolder(const char* variable, const char* folderAtHome) {
  if (std::string folder = environment(variable); !folder.empty()) return folder;
  const std::string home = homeDirectory();
  return home.empty() ? home : home + folderAtHome;
}

/// Never more than the size that the system gives, so that a pipe or a device, which has none, is not read.
std::optional<std::string> fileContents(const std::string& path) {
  const posix::Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.number(), &status) < 0) return std::nullopt;
  if (status.st_size > largestFile) return std::nullopt;

  std::string contents(static_cast<std::size_t>(status.st_size), '\0');
  std::size_t length = 0;
  while (length < contents.size()) {
    const ssize_t got = posix::uninterrupted(
        [&] { return ::read(file.number(), contents.data() + length, contents.size() - length); });
    if (got < 0) return std::nullopt;
    if (got == 0) break;  // somebody shortened it
    length += static_cast<std::size_t>(got);
  }
  contents.resize(length);
  return contents;
}

class SettingsFile : public SettingsStore {
 public:
  std::u16string read(std::string_view application, std::string_view section, std::string_view key,
                      std::u16string_view fallback) override {
    const auto value = stored(application, section, key);
    return value ? utf16(*value) : std::u16string(fallback);
  }

 private:
  static std::optional<std::string> stored(std::string_view application, std::string_view section,
                                           std::string_view key) {
    if (!equalIgnoringCase(application, settingsApplication)) return std::nullopt;
    const auto contents = fileContents(settingsPath());
    return contents ? SettingsText(*contents).value(section, key) : std::nullopt;
  }
};

}  // namespace

std::string settingsPath() {
  if (std::string path = environment("ZENTARO_SETTINGS"); !path.empty()) return path;
  std::string folder = userFolder("XDG_CONFIG_HOME", "/.config");
  if (folder.empty()) return {};
  return folder.append("/").append(settingsApplication) + "/settings.ini";
}

std::string stateFolder() {
  const std::string folder = userFolder("XDG_STATE_HOME", "/.local/state");
  return folder.empty() ? folder : folder + "/zentaro";
}

namespace posix {

SettingsStore& settingsFile() { return lasting<SettingsFile>(); }

}  // namespace posix
}  // namespace zentaro
