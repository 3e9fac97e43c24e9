// Modes and owners.
#include "base/system/private_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace zentaro::system {

void makePrivate(const std::filesystem::path& file) {
  const int made = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (made < 0 && errno != EEXIST) throw std::system_error(errno, std::generic_category(), file.string());
  if (made >= 0) ::close(made);
}

std::string lookOf(const std::filesystem::path& file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) return {};
  return std::to_string(status.st_ino) + " " + std::to_string(status.st_size) + " " +
         std::to_string(status.st_mtim.tv_sec) + "." + std::to_string(status.st_mtim.tv_nsec);
}

void leaveToOwnerOfFolder(const std::filesystem::path& file) {
  struct stat folder {};
  if (::geteuid() != 0 || ::stat(file.parent_path().c_str(), &folder) != 0) return;
  if (::chown(file.c_str(), folder.st_uid, folder.st_gid) != 0)
    throw std::system_error(errno, std::generic_category(), file.string());
}

}  // namespace zentaro::system
