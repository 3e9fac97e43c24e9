// The day as the printer itself has it.
#pragma once

#include <cstdint>
#include <string>

#include "tools/connection/port_options.h"

namespace zentaro::tools {

/// The printer's own day, since its last Z.
struct PrinterDay {
  std::string serialNumber;
  int lastZ = 0, lastInvoice = 0;
  std::int64_t net = 0, tax = 0, returned = 0;  // cents, without IGTF
};

/// Asks it, which prints nothing. Raises std::runtime_error when it does not answer, or refuses.
PrinterDay askPrinter(const PortOptions& port);

}  // namespace zentaro::tools
