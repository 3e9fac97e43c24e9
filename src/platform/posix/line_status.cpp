// The status of a serial line, from the terminal's ioctls.
#include "platform/posix/line_status.h"

#include <linux/serial.h>
#include <sys/ioctl.h>

namespace zentaro::posix {

int bytesWaiting(int descriptor) {
  int count = 0;
  return ::ioctl(descriptor, FIONREAD, &count) < 0 ? -1 : count;
}

std::optional<LineCounters> lineCounters(int descriptor) {
  serial_icounter_struct counts{};
  if (::ioctl(descriptor, TIOCGICOUNT, &counts) < 0) return std::nullopt;
  return LineCounters{counts.overrun, counts.parity, counts.frame, counts.brk, counts.buf_overrun};
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
