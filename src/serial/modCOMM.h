// The serial port driver: eight ports for each thread, one last-error record, and a trace of the
// traffic.
//
// Every operation returns a status or a count. A failed system call, and a fault such as a port
// number outside 1 to 8 or a trace line that cannot be written, goes into the last-error record,
// which successes leave alone. Nothing is raised but what the host's own code throws while it is
// yielded to.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "zentaro_api.h"

namespace zentaro::modCOMM {

/// Opens `device` and configures it as `settings` says, "baud=9600 parity=N data=8 stop=1". 0 on
/// success; -1 when the port is open already; else the code in the last-error record, with the port
/// open when the device itself could be opened. A failure starts the driver trace.
std::int32_t CommOpen(std::int16_t port, const std::u16string& device, const std::u16string& settings);

/// 0 on success and for a port that is not open; else the code in the last-error record. Stops the
/// driver trace always.
std::int32_t CommClose(std::int16_t port);

/// Puts into `data` what has arrived, at most 4096 characters, and returns their number: 0 when nothing has,
/// -1 on failure. Never waits. Yields to the host once.
ZENTARO_API std::int32_t CommRead(std::int16_t port, std::u16string& data, std::int32_t wanted);

/// Sends the characters of `data` as bytes of the code page and returns how many left; -1 when the
/// write call fails. `data` is the driver's own: the host, which runs meanwhile, may change the variable
/// that it came from.
std::int32_t CommWrite(std::int16_t port, std::u16string data);

/// The code in the last-error record; `text` becomes "Error (code): function - message".
std::int32_t CommErrorText(std::u16string& text);

/// Sleeps until a byte can be read or `limit` is over, but never long: 250 ms at most, 9 ms when
/// the host wants to be yielded to. On a port that is not open it sleeps for that time.
ZENTARO_API void CommWait(std::int16_t port, std::chrono::milliseconds limit);

}  // namespace zentaro::modCOMM
