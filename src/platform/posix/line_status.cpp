// The status of a serial line, from poll() and the terminal's ioctls.
#include "platform/posix/line_status.h"

#include <linux/serial.h>
#include <poll.h>
#include <sys/ioctl.h>

namespace zentaro::posix {

int bytesWaiting(int descriptor) {
  int count = 0;
  return ::ioctl(descriptor, FIONREAD, &count) < 0 ? -1 : count;
}

bool isHungUp(int descriptor) {
  pollfd state{descriptor, POLLIN, 0};
  return ::poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

LineCounters lineCounters(int descriptor) {
  serial_icounter_struct counts{};
  if (::ioctl(descriptor, TIOCGICOUNT, &counts) < 0) return {};
  return {counts.overrun, counts.parity, counts.frame, counts.brk, counts.buf_overrun};
}

std::uint32_t lineErrorFlags(const LineCounters& before, const LineCounters& now) {
  std::uint32_t flags = 0;
  if (now.bufferOverrun != before.bufferOverrun) flags |= 0x01;
  if (now.overrun != before.overrun) flags |= 0x02;
  if (now.parity != before.parity) flags |= 0x04;
  if (now.frame != before.frame) flags |= 0x08;
  if (now.breaks != before.breaks) flags |= 0x10;
  return flags;
}

}  // namespace zentaro::posix
