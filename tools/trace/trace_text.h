// A trace in readable lines.
#pragma once

#include <string>

#include "tools/trace/exchange.h"

namespace zentaro::tools {

/// Whether the fields are shown: they hold names of customers.
enum class FieldTexts { Shown, LeftOut };

/// Commands (->) and answers (<-), one a line: line of the file, time, seconds since the line before, name,
/// code, sequence number, status words, fields and checksum; then the lines that could not be read.
std::string traceText(const Trace& trace, FieldTexts texts = FieldTexts::Shown);

}  // namespace zentaro::tools
