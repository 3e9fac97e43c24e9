// A trace in readable lines.
#pragma once

#include <string>

#include "trace/exchange.h"

namespace zentaro::tools {

/// Commands (->) and answers (<-), one a line: line of the file, time, seconds since the line before, name,
/// code, sequence number, status words, fields and checksum; then the lines that could not be read.
std::string traceText(const Trace& trace);

}  // namespace zentaro::tools
