// What a serial line reports of itself: bytes waiting, and the line errors since the last look.
#pragma once

#include <cstdint>
#include <optional>

namespace zentaro::posix {

/// The driver's counts of line errors since the system started.
struct LineCounters {
  int overrun = 0, parity = 0, frame = 0, breaks = 0, bufferOverrun = 0;
};

/// Bytes that can be read; -1 with errno set when the device cannot tell, as after a hang-up.
int bytesWaiting(int descriptor);
/// Nothing on a device that does not count, such as a pseudo-terminal.
std::optional<LineCounters> lineCounters(int descriptor);
/// The flags CE_RXOVER 1, CE_OVERRUN 2, CE_RXPARITY 4, CE_FRAME 8 and CE_BREAK 0x10 for the counts
/// that changed.
std::uint32_t lineErrorFlags(const LineCounters& before, const LineCounters& now);

}  // namespace zentaro::posix
