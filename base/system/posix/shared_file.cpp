// Rights that no umask changes, and locks of an open file description, which no other descriptor takes away.
#include "base/system/shared_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace zentaro::system {

namespace {

constexpr mode_t forTheGroup = 0660;

[[noreturn]] void fail(const std::filesystem::path& path) {
  throw std::system_error(errno, std::generic_category(), path.string());
}

// A new name is on the disk only when its folder is.
void syncFolder(const std::filesystem::path& folder) {
  const int handle = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  ::fsync(handle);
  ::close(handle);
}

struct flock wholeFile() {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  return lock;
}

int openShared(const std::filesystem::path& file) {
  makeShared(file);
  // Required: not waiting, for somebody may have put a fifo there.
  const int handle = ::open(file.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (handle < 0) fail(file);
  return handle;
}

}  // namespace

void makeShared(const std::filesystem::path& file) {
  const int handle = ::open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, forTheGroup);
  if (handle < 0 && errno != EEXIST) fail(file);
  if (handle < 0) return;
  const bool isDone = ::fchmod(handle, forTheGroup) == 0;
  const int error = errno;
  ::close(handle);
  errno = error;
  if (!isDone) fail(file);
  syncFolder(file.parent_path());
}

void makeFolders(const std::filesystem::path& folder) {
  if (folder.empty() || std::filesystem::is_directory(folder)) return;
  makeFolders(folder.parent_path());
  if (::mkdir(folder.c_str(), 0700) != 0) {
    if (errno != EEXIST) fail(folder);
    return;
  }
  syncFolder(folder.parent_path());
  struct stat made {};
  if (::stat(folder.c_str(), &made) != 0) fail(folder);
  constexpr mode_t andItsGroup = S_ISGID | 0770;
  if ((made.st_mode & S_ISGID) != 0 && ::chmod(folder.c_str(), andItsGroup) != 0) fail(folder);
}

std::optional<FileLock> FileLock::tryTake(const std::filesystem::path& file) {
  FileLock lock(openShared(file));
  struct flock wanted = wholeFile();
  if (::fcntl(static_cast<int>(lock.handle_), F_OFD_SETLK, &wanted) == 0) return lock;
  if (errno != EAGAIN && errno != EACCES) fail(file);
  return std::nullopt;
}

bool FileLock::isTaken(const std::filesystem::path& file) {
  if (!std::filesystem::exists(file)) return false;
  const FileLock probe(openShared(file));
  struct flock asked = wholeFile();
  if (::fcntl(static_cast<int>(probe.handle_), F_OFD_GETLK, &asked) != 0) fail(file);
  return asked.l_type != F_UNLCK;
}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

FileLock::~FileLock() {
  if (handle_ >= 0) ::close(static_cast<int>(handle_));
}

}  // namespace zentaro::system
