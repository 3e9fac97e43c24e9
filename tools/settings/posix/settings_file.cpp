// Reading and replacing the settings file.
#include "tools/settings/settings_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>

#include "base/files/careful_file.h"
#include "base/system/error_text.h"
#include "base/terminal/language.h"

namespace zentaro::tools {

namespace {

namespace files = std::filesystem;
using terminal::say;

// Held while the file is read, changed and replaced: of two commands at once the second waits. It is the
// folder that is locked, since the file itself is replaced, and a lock file would be left behind.
class FolderLock {
 public:
  explicit FolderLock(const std::string& folder)
      : folder_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    while (folder_ >= 0 && ::flock(folder_, LOCK_EX) != 0) {
      if (errno != EINTR) break;
    }
    if (folder_ < 0)
      throw std::runtime_error(
          say("no se puede abrir {}: {}", "cannot open {}: {}", {folder, system::errorText(errno)}));
  }
  ~FolderLock() { ::close(folder_); }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int folder_;
};

std::string folderOf(const files::path& file) {
  const files::path folder = file.has_parent_path() ? file.parent_path() : ".";
  std::error_code failed;
  files::create_directories(folder, failed);
  if (failed)
    throw std::runtime_error(say("no se puede crear la carpeta de {}: {}", "cannot make the folder of {}: {}",
                                 {file.string(), system::errorText(failed.value())}));
  return folder.string();
}

}  // namespace

SettingsFile::SettingsFile(std::string path) : path_(std::move(path)) {
  if (path_.empty()) {
    throw std::runtime_error(
        say("sin carpeta personal no hay archivo de configuración: defina HOME o ZENTARO_SETTINGS",
            "there is no settings file without a home directory: set HOME or ZENTARO_SETTINGS"));
  }
  read();
}

void SettingsFile::set(std::string_view section, std::string_view key, std::string_view value) {
  change([&](SettingsText& settings) { settings.set(section, key, value); });
}

void SettingsFile::remove(std::string_view section, std::string_view key) {
  change([&](SettingsText& settings) { settings.remove(section, key); });
}

void SettingsFile::change(const std::function<void(SettingsText&)>& edit) {
  const files::path target = base::behindLinks(path_);
  const FolderLock lock(folderOf(target));
  read();
  SettingsText changed = settings_;
  edit(changed);
  base::replaceFile(target, changed.text());
  std::swap(settings_, changed);
}

void SettingsFile::read() {
  const auto content = base::contentOf(path_);
  exists_ = content.has_value();
  settings_ = SettingsText(content.value_or(""));
}

}  // namespace zentaro::tools
