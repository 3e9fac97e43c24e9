// Write beside, flush to the disk, rename over.
#include "base/files/careful_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>

#include "base/system/error_text.h"
#include "base/terminal/language.h"

namespace zentaro::base {

namespace {

namespace fs = std::filesystem;
using terminal::say;

constexpr mode_t newFileMode = 0644;

[[noreturn]] void failToRead(const fs::path& path) {
  throw std::runtime_error(
      say("no se puede leer {}: {}", "cannot read {}: {}", {path.string(), system::errorText(errno)}));
}
[[noreturn]] void failToWrite(const fs::path& path) {
  throw std::runtime_error(
      say("no se puede escribir {}: {}", "cannot write {}: {}", {path.string(), system::errorText(errno)}));
}
[[noreturn]] void refuseKind(const fs::path& path) {
  throw std::runtime_error(say("{} no es un archivo", "{} is no file", {path.string()}));
}

struct stat statusOf(const files::Descriptor& file) {
  struct stat found {};
  ::fstat(file.get(), &found);
  return found;
}

bool isFile(const files::Descriptor& file) { return S_ISREG(statusOf(file).st_mode); }

// A new file beside the real one, gone unless it took its place. Its name is always the same, so that processes that
// are killed leave no more than one, which the next replacement takes over.
class Replacement {
 public:
  explicit Replacement(const fs::path& path) : path_(path), fresh_(path.string() + ".new") {
    while (!open()) continue;
    if (::ftruncate(file_.get(), 0) != 0) failToWrite(fresh_);
  }
  ~Replacement() {
    if (!isDone_) ::unlink(fresh_.c_str());
  }
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  void write(std::string_view content) const {
    errno = files::writeAll(file_.get(), content);
    if (errno != 0) failToWrite(path_);
  }
  void takePlace() {
    struct stat old {};
    const bool isThere = ::stat(path_.c_str(), &old) == 0;
    if (isThere && !S_ISREG(old.st_mode)) refuseKind(path_);
    if (isThere && ::fchmod(file_.get(), old.st_mode & 07777U) != 0) failToWrite(path_);
    if (::fsync(file_.get()) != 0 || ::rename(fresh_.c_str(), path_.c_str()) != 0) failToWrite(path_);
    isDone_ = true;
  }

 private:
  // False: to be tried again. Whoever else may write to the file, or to one that shares its content, must not be
  // let into the real one; two processes that replace it at once take turns.
  bool open() {
    constexpr int flags = O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    file_ = files::Descriptor(::open(fresh_.c_str(), flags, newFileMode));
    if (!file_.isOpen()) failToWrite(fresh_);
    if (!isFile(file_)) refuseKind(fresh_);
    const struct stat found = statusOf(file_);
    if (found.st_uid != ::geteuid() || found.st_nlink > 1) {
      if (::unlink(fresh_.c_str()) != 0) failToWrite(fresh_);
      return false;
    }
    ::flock(file_.get(), LOCK_EX);
    struct stat now {};
    return ::stat(fresh_.c_str(), &now) == 0 && now.st_ino == found.st_ino && now.st_dev == found.st_dev;
  }

  fs::path path_, fresh_;
  files::Descriptor file_;
  bool isDone_ = false;
};

// The new name is on the disk, too. The content already stands: a failure here is none of the replacing.
void flushFolder(const fs::path& path) {
  const fs::path parent = path.has_parent_path() ? path.parent_path() : ".";
  const files::Descriptor folder(::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.isOpen()) ::fsync(folder.get());
}

}  // namespace

fs::path behindLinks(fs::path path) {
  constexpr int mostLinks = 40;
  std::error_code none;
  for (int links = 0; fs::is_symlink(path, none); ++links) {
    errno = ELOOP;
    if (links == mostLinks) failToRead(path);
    path = path.parent_path() / fs::read_symlink(path, none);
  }
  return path;
}

std::optional<std::string> contentOf(const fs::path& path) {
  const files::Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file.isOpen() && errno == ENOENT) return std::nullopt;
  if (!file.isOpen()) failToRead(path);
  if (!isFile(file)) refuseKind(path);
  std::string content;
  std::array<char, 65536> buffer;
  for (;;) {
    const ssize_t count = ::read(file.get(), buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) failToRead(path);
    if (count == 0) return content;
    content.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

files::Descriptor openToAppend(const fs::path& path) {
  constexpr int flags = O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  files::Descriptor file(::open(path.c_str(), flags, newFileMode));
  // A fifo without a reader cannot be opened to write, a folder never.
  if (!file.isOpen() && errno != ENXIO && errno != EISDIR) failToWrite(path);
  if (!file.isOpen() || !isFile(file)) refuseKind(path);
  return file;
}

void replaceFile(const fs::path& path, std::string_view content) {
  const fs::path real = behindLinks(path);
  Replacement fresh(real);
  fresh.write(content);
  fresh.takePlace();
  flushFolder(real);
}

}  // namespace zentaro::base
