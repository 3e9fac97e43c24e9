// What a printer says of itself when it is asked for its status and its serial number, and what it means for the
// user. Asking prints nothing and changes nothing.
#pragma once

#include <optional>
#include <string>

#include "tools/connection/connection.h"
#include "tools/doctor/finding.h"
#include "tools/status/status_bits.h"

namespace zentaro::tools {

struct PrinterFacts {
  till::Heard heard = till::Heard::Nothing;
  ENVERR_CODES outcome = ENVERR_OK;
  std::string stray = {};  // bytes that came and are no answer, in hexadecimal: of a line that is not silent
  StatusWords words = {};
  Bits bits = Bits::Unknown;
  std::string errorText = {};                     // the printer's own
  std::string serialNumber = {};                  // empty when it does not give it
  std::optional<int> document = {};               // 0: none is open
  std::optional<Date> clock = {}, computer = {};  // what it says that it is, and what this computer says
};

/// Asks in step, with checksums verified; on a line without an answer it looks for what comes instead.
PrinterFacts examinePrinter(Connection& connection);

/// `portWords` are the options by which another command uses the same printer.
void judgePrinter(const PrinterFacts& facts, const std::string& subject, const std::string& portWords,
                  Findings& findings);

}  // namespace zentaro::tools
