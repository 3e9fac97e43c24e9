// The commands that the printer knows, each with its handler. A handler reads its fields, lets the fiscal
// machine decide, prints, and returns the data fields of the answer, or throws Refused.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "virtual-printer/device/arguments.h"
#include "virtual-printer/device/works.h"

namespace virtual_printer {

using Fields = std::vector<std::string>;
using Handler = Fields (*)(Works&, const Arguments&);

enum class Paper { NotNeeded, Needed };

struct CommandEntry {
  std::uint8_t code;
  const char* name;  // in logs and fault plans
  Paper paper;
  Handler handler;
};

inline constexpr std::uint8_t statusCode = 0x38;

std::span<const CommandEntry> commandTable();
const CommandEntry* findCommand(std::uint8_t code);
const CommandEntry* findCommand(std::string_view name);

// Sales: device/sale_commands.cpp
Fields openDocument(Works& works, const Arguments& arguments);
Fields extraLine(Works& works, const Arguments& arguments);
Fields itemLine(Works& works, const Arguments& arguments);
Fields subtotal(Works& works, const Arguments& arguments);
Fields payment(Works& works, const Arguments& arguments);  // also discount and cancellation
Fields closeDocument(Works& works, const Arguments& arguments);

// Non-fiscal documents and texts: device/text_commands.cpp
Fields openNonFiscal(Works& works, const Arguments& arguments);
Fields nonFiscalLine(Works& works, const Arguments& arguments);
Fields closeNonFiscal(Works& works, const Arguments& arguments);
Fields setHeader(Works& works, const Arguments& arguments);
Fields setFooter(Works& works, const Arguments& arguments);

// Closings, memory and status: device/report_commands.cpp
Fields status(Works& works, const Arguments& arguments);
Fields closing(Works& works, const Arguments& arguments);
Fields memoryReport(Works& works, const Arguments& arguments);

// Clock, drawers, stations: device/service_commands.cpp
Fields cutPaper(Works& works, const Arguments& arguments);
Fields feedPaper(Works& works, const Arguments& arguments);
Fields setClock(Works& works, const Arguments& arguments);
Fields readClock(Works& works, const Arguments& arguments);
Fields openDrawer(Works& works, const Arguments& arguments);
Fields readSerial(Works& works, const Arguments& arguments);
Fields slipOn(Works& works, const Arguments& arguments);
Fields slipOff(Works& works, const Arguments& arguments);
Fields chequeFace(Works& works, const Arguments& arguments);
Fields chequeBack(Works& works, const Arguments& arguments);

}  // namespace virtual_printer
