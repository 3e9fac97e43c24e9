// The mark as a record lock that belongs to the open file.
#include "line/served_mark.h"

#include <fcntl.h>

#include <cerrno>

#include "line/descriptor.h"

namespace printer {
namespace {

struct flock wholeFile() {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  return lock;
}

}  // namespace

void markServed(int slave) {
  struct flock lock = wholeFile();
  ::fcntl(slave, F_OFD_SETLK, &lock);
}

bool isServed(const std::filesystem::path& device) {
  const Descriptor probe{::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)};
  if (!probe.isOpen()) return errno == EBUSY;  // some host has it for itself
  struct flock lock = wholeFile();
  return ::fcntl(probe.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace printer
