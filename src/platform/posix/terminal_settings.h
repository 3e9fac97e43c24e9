// Line settings on a terminal: read from termios, and applied as a raw line on which what was asked
// is checked.
#pragma once

#include "platform/serial_services.h"

namespace zentaro::posix {

/// False with errno set when the descriptor is no terminal.
bool readLineSettings(int descriptor, LineSettings& settings);

/// Makes the line raw with the rate, parity, bits and flow control of `settings`; everything else
/// is set as the native record says. Reads never wait by themselves. False with EINVAL when the
/// device did not take all of it.
bool applyLineSettings(int descriptor, const LineSettings& settings);

}  // namespace zentaro::posix
