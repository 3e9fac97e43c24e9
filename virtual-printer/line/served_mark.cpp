// The mark as a record lock that belongs to the open file.
#include "virtual-printer/line/served_mark.h"

#include <fcntl.h>

#include <cerrno>

namespace printer {
namespace {

// One byte, at the path's FNV-1a hash.
struct flock placeOf(const std::filesystem::path& link) {
  std::uint32_t hash = 2166136261;
  for (const char character : std::filesystem::absolute(link).lexically_normal().string())
    hash = (hash ^ static_cast<unsigned char>(character)) * 16777619;
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = hash;
  lock.l_len = 1;
  return lock;
}

Descriptor open(const std::filesystem::path& device) {
  return Descriptor(::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
}

}  // namespace

Descriptor markServed(const std::filesystem::path& device, const std::filesystem::path& link) {
  Descriptor descriptor = open(device);
  struct flock lock = placeOf(link);
  ::fcntl(descriptor.get(), F_OFD_SETLK, &lock);
  return descriptor;
}

bool isServed(const std::filesystem::path& link) {
  const Descriptor probe = open(link);
  if (!probe.isOpen()) return errno == EBUSY;  // some host has it for itself
  struct flock lock = placeOf(link);
  return ::fcntl(probe.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace printer
