// What a printer says of itself when it is asked for its status, and what it means for the user. Asking prints
// nothing and changes nothing.
#pragma once

#include <optional>
#include <string>

#include "tools/connection/connection.h"
#include "tools/doctor/finding.h"

namespace zentaro::tools {

struct PrinterFacts {
  Heard heard = Heard::Nothing;
  ENVERR_CODES outcome = ENVERR_OK;
  std::int32_t printerWord = 0, fiscalWord = 0;
  std::string errorText;                    // the printer's own
  std::optional<int> document = {};         // 0: none is open
  std::optional<double> minutesAhead = {};  // the printer's clock, of the computer's
};

/// Asks in step, with checksums verified.
PrinterFacts examinePrinter(Connection& connection);

/// `portWords` are the options by which another command uses the same printer.
void judgePrinter(const PrinterFacts& facts, const std::string& subject, const std::string& portWords,
                  Findings& findings);

}  // namespace zentaro::tools
