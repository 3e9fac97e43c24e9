// Write beside under a name that nobody can foresee, flush to the disk, rename over.
#include "base/files/careful_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <random>
#include <stdexcept>
#include <utility>

#include "base/terminal/language.h"

namespace zentaro::tools {

namespace {

namespace fs = std::filesystem;
using terminal::say;

constexpr mode_t newFileMode = 0644;

[[noreturn]] void failToRead(const fs::path& path) {
  throw std::runtime_error(
      say("no se puede leer {}: {}", "cannot read {}: {}", {path.string(), std::strerror(errno)}));
}
[[noreturn]] void failToWrite(const fs::path& path) {
  throw std::runtime_error(
      say("no se puede escribir {}: {}", "cannot write {}: {}", {path.string(), std::strerror(errno)}));
}
[[noreturn]] void refuseKind(const fs::path& path) {
  throw std::runtime_error(say("{} no es un archivo", "{} is no file", {path.string()}));
}

class Opened {
 public:
  explicit Opened(int number) : number_(number) {}
  ~Opened() {
    if (number_ >= 0) ::close(number_);
  }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;
  int get() const { return number_; }
  bool isOpen() const { return number_ >= 0; }
  bool isFile() const {
    struct stat found {};
    return ::fstat(number_, &found) == 0 && S_ISREG(found.st_mode);
  }
  int release() { return std::exchange(number_, -1); }

 private:
  int number_;
};

std::string randomName(const fs::path& path) {
  constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
  std::random_device dice;
  std::string name = path.string() + ".";
  for (int letter = 0; letter < 12; ++letter) name += letters[dice() % letters.size()];
  return name;
}

// A new file beside the real one, gone unless it took its place.
class Replacement {
 public:
  explicit Replacement(const fs::path& path) : path_(path), fresh_(randomName(path)) {
    file_ = ::open(fresh_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, newFileMode);
    if (file_ < 0) failToWrite(path_);
  }
  ~Replacement() {
    ::close(file_);
    if (!isDone_) ::unlink(fresh_.c_str());
  }
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  void write(std::string_view rest) const {
    while (!rest.empty()) {
      const ssize_t count = ::write(file_, rest.data(), rest.size());
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) failToWrite(path_);
      rest.remove_prefix(static_cast<std::size_t>(count));
    }
  }
  void takePlace() {
    struct stat old {};
    const bool isThere = ::stat(path_.c_str(), &old) == 0;
    if (isThere && !S_ISREG(old.st_mode)) refuseKind(path_);
    if (isThere && ::fchmod(file_, old.st_mode & 07777U) != 0) failToWrite(path_);
    if (::fsync(file_) != 0 || ::rename(fresh_.c_str(), path_.c_str()) != 0) failToWrite(path_);
    isDone_ = true;
  }

 private:
  fs::path path_;
  std::string fresh_;
  int file_ = -1;
  bool isDone_ = false;
};

// The new name is on the disk, too. The content already stands: a failure here is none of the replacing.
void flushFolder(const fs::path& path) {
  const fs::path parent = path.has_parent_path() ? path.parent_path() : ".";
  const Opened folder(::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
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
  const Opened file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file.isOpen() && errno == ENOENT) return std::nullopt;
  if (!file.isOpen()) failToRead(path);
  if (!file.isFile()) refuseKind(path);
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

int openToAppend(const fs::path& path) {
  constexpr int flags = O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  Opened file(::open(path.c_str(), flags, newFileMode));
  // A fifo without a reader cannot be opened to write, a folder never.
  if (!file.isOpen() && errno != ENXIO && errno != EISDIR) failToWrite(path);
  if (!file.isOpen() || !file.isFile()) refuseKind(path);
  return file.release();
}

void replaceFile(const fs::path& path, std::string_view content) {
  const fs::path real = behindLinks(path);
  Replacement fresh(real);
  fresh.write(content);
  fresh.takePlace();
  flushFolder(real);
}

}  // namespace zentaro::tools
