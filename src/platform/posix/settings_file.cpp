// The settings store: INI files of the user and of the machine.
#include "platform/posix/settings_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/posix/descriptor.h"
#include "platform/posix/posix_services.h"
#include "platform/setting_keys.h"
#include "platform/settings_text.h"
#include "text/ascii.h"
#include "text/unicode.h"

namespace zentaro::posix {
namespace {

constexpr off_t largestFile = 1 << 20;  // anything larger is no settings file

/// Nothing, with errno set, when the file cannot be read. Never more than the size that the system gives,
/// so that a device, which has none, is not read.
std::optional<std::string> fileContents(const std::string& path) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.number(), &status) < 0) return std::nullopt;
  if (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode) || status.st_size > largestFile) {
    errno = status.st_size > largestFile ? EFBIG : ENOTSUP;
    return std::nullopt;
  }

  std::string contents(static_cast<std::size_t>(status.st_size), '\0');
  std::size_t length = 0;
  while (length < contents.size()) {
    const ssize_t got = uninterrupted(
        [&] { return ::read(file.number(), contents.data() + length, contents.size() - length); });
    if (got < 0) return std::nullopt;
    if (got == 0) break;  // somebody shortened it
    length += static_cast<std::size_t>(got);
  }
  contents.resize(length);
  return contents;
}

class SettingsFiles : public SettingsStore {
 public:
  std::u16string read(std::string_view application, std::string_view section, std::string_view key,
                      std::u16string_view fallback) override {
    if (!equalIgnoringCase(application, settingsApplication)) return std::u16string(fallback);
    const auto value = firstValue(settingsPaths(), section, key);
    return value ? utf16(*value) : std::u16string(fallback);
  }
};

}  // namespace

std::optional<std::string> firstValue(const std::vector<std::string>& paths, std::string_view section,
                                      std::string_view key) {
  for (const std::string& path : paths) {
    const auto contents = fileContents(path);
    auto value = contents ? SettingsText(*contents).value(section, key) : std::nullopt;
    if (value) return value;
  }
  return std::nullopt;
}

std::optional<UnreadableFile> firstUnreadable(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    if (fileContents(path) || errno == ENOENT || errno == ENOTDIR) continue;
    return UnreadableFile{path, {errno, std::generic_category()}};
  }
  return std::nullopt;
}

SettingsStore& settingsFiles() { return lasting<SettingsFiles>(); }

}  // namespace zentaro::posix

namespace zentaro {

std::optional<UnreadableFile> unreadableSettings() { return posix::firstUnreadable(settingsPaths()); }

}  // namespace zentaro
