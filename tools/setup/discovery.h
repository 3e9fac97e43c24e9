// What hangs on a serial device.
#pragma once

#include <string>

#include "tools/connection/port_options.h"
#include "tools/doctor/port_facts.h"
#include "tools/doctor/printer_facts.h"

namespace zentaro::tools {

struct Discovery {
  SerialDevice device;
  PortFacts port = {};
  bool wasAsked = false;
  PrinterFacts printer = {};  // of a device that was asked
  Findings findings = {};     // what was found out, for people

  bool isPrinter() const { return wasAsked && printer.heard == till::Heard::InStep; }
};

/// Looks at the device without touching its line.
Discovery lookAt(const SerialDevice& device);

/// Asks it for a printer's status, which prints nothing; what is no printer may take the bytes for something else.
void ask(Discovery& discovery, const PortOptions& options);

}  // namespace zentaro::tools
