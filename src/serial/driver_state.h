// What the serial driver keeps for each thread: its ports, its last error and its trace.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/serial_services.h"
#include "serial/trace_file.h"

namespace zentaro::modCOMM {

struct PortEntry {
  SerialHandle handle = invalidSerialHandle;  // stays as it was after a close
  bool open = false;
  LineSettings line;
  SerialServices* services = nullptr;  // whose handle it is
};

struct LastErrorRecord {
  std::int32_t code = 0;
  std::u16string function, message;
};

struct DriverState {
  DriverState() = default;
  DriverState(const DriverState&) = delete;
  DriverState& operator=(const DriverState&) = delete;
  /// Closes the ports that the thread left open.
  ~DriverState();

  std::array<PortEntry, 8> ports;  // of the port numbers 1 to 8
  LastErrorRecord lastError;
  Overlapped overlapped;
  TraceFile trace;
};

/// The calling thread's.
DriverState& driverState();

}  // namespace zentaro::modCOMM
