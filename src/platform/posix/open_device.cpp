// Opening a serial device for this process alone.
#include "platform/posix/open_device.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>

namespace zentaro::posix {
namespace {

/// The slave side, by the device numbers that the system reserves for it.
bool isPseudoTerminal(int descriptor) {
  struct stat status {};
  if (::fstat(descriptor, &status) < 0 || !S_ISCHR(status.st_mode)) return false;
  return major(status.st_rdev) >= 136 && major(status.st_rdev) <= 143;
}

/// A pseudo-terminal stays exclusive after a program that was killed, as long as its other side is
/// open, and nobody could use it again: there the lock has to do.
bool makeExclusive(int descriptor) {
  return isPseudoTerminal(descriptor) || ::ioctl(descriptor, TIOCEXCL) == 0;
}

}  // namespace

std::optional<OpenDevice> OpenDevice::open(const std::string& path) {
  // O_NONBLOCK: opening a line without a carrier must not wait. O_NOCTTY: a hang-up must not end the program.
  constexpr int flags = O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC;
  Descriptor descriptor(uninterrupted([&] { return ::open(path.c_str(), flags); }));
  termios line;
  if (!descriptor.isOpen() || ::tcgetattr(descriptor.number(), &line) < 0) return std::nullopt;
  if (uninterrupted([&] { return ::flock(descriptor.number(), LOCK_EX | LOCK_NB); }) < 0) {
    if (errno == EWOULDBLOCK) errno = EBUSY;
    return std::nullopt;
  }
  if (!makeExclusive(descriptor.number())) return std::nullopt;
  return OpenDevice(std::move(descriptor));
}

OpenDevice::OpenDevice(Descriptor descriptor)
    : descriptor_(std::move(descriptor)),
      opener_(::getpid()),
      counters_(lineCounters(descriptor_.number())) {}

OpenDevice::~OpenDevice() { giveUp(); }

void OpenDevice::giveUp() {
  if (isGone()) return;                                   // or moved from
  if (opener_ != ::getpid()) return descriptor_.close();  // lock and output are still the parent's
  // Else the close waits, for up to half a minute, until a far side that is off has taken all of it,
  // and a command that was told as lost is carried out after all.
  ::tcflush(descriptor_.number(), TCOFLUSH);
  // Both would outlive this descriptor where a forked child has it too.
  ::ioctl(descriptor_.number(), TIOCNXCL);
  ::flock(descriptor_.number(), LOCK_UN);
  descriptor_.close();
}

std::uint32_t OpenDevice::takeLineErrors() {
  if (!counters_) return 0;
  const LineCounters before = *counters_;
  counters_ = lineCounters(descriptor_.number()).value_or(before);
  return lineErrorFlags(before, *counters_);
}

}  // namespace zentaro::posix
