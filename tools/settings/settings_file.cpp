// Reading and replacing the settings file.
#include "settings/settings_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace zentaro::tools {

namespace {

namespace files = std::filesystem;

[[noreturn]] void fail(const std::string& what, const std::string& path) {
  throw std::runtime_error(what + " " + path + ": " + std::strerror(errno));
}

std::string contentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream contents;
  if (file.peek() != std::ifstream::traits_type::eof()) contents << file.rdbuf();
  if (!file.is_open() || file.bad()) fail("cannot read", path);
  return contents.str();
}

// The file that a chain of links leads to: it is what must be replaced, not the link.
std::string behindLinks(const std::string& path) {
  std::error_code none;
  const files::path target = files::weakly_canonical(path, none);
  return none ? path : target.string();
}

// A temporary file beside the real one, gone unless it took its place.
class Replacement {
 public:
  explicit Replacement(const std::string& path) : path_(path), temporary_(path + ".XXXXXX") {
    file_ = ::mkstemp(temporary_.data());
    if (file_ < 0) fail("cannot write", temporary_);
  }
  ~Replacement() {
    if (file_ >= 0) ::close(file_);
    if (!done_) ::unlink(temporary_.c_str());
  }
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  void write(const std::string& contents) const {
    for (std::size_t length = 0; length < contents.size();) {
      const ssize_t written = ::write(file_, contents.data() + length, contents.size() - length);
      if (written < 0 && errno != EINTR) fail("cannot write", temporary_);
      if (written > 0) length += static_cast<std::size_t>(written);
    }
  }
  void takePlace() {
    struct stat old {};
    const mode_t mode = ::stat(path_.c_str(), &old) == 0 ? old.st_mode & 07777U : 0644U;
    if (::fchmod(file_, mode) < 0 || ::fsync(file_) < 0) fail("cannot write", temporary_);
    if (::rename(temporary_.c_str(), path_.c_str()) < 0) fail("cannot replace", path_);
    done_ = true;
  }

 private:
  std::string path_, temporary_;
  int file_ = -1;
  bool done_ = false;
};

}  // namespace

SettingsFile::SettingsFile(std::string path) : path_(std::move(path)) {
  if (path_.empty()) {
    throw std::runtime_error(
        "there is no settings file without a home directory: set HOME or ZENTARO_SETTINGS");
  }
  std::error_code ignored;
  exists_ = files::exists(path_, ignored);
  if (exists_) settings_ = SettingsText(contentsOf(path_));
}

void SettingsFile::set(std::string_view section, std::string_view key, std::string_view value) {
  SettingsText changed = settings_;
  changed.set(section, key, value);
  std::swap(settings_, changed);
  write();
}

void SettingsFile::write() const {
  const std::string target = behindLinks(path_);
  std::error_code failed;
  files::create_directories(files::path(target).parent_path(), failed);
  if (failed) throw std::runtime_error("cannot make the folder of " + target + ": " + failed.message());
  Replacement replacement(target);
  replacement.write(settings_.text());
  replacement.takePlace();
}

}  // namespace zentaro::tools
