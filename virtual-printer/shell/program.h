// The running printer: line, paper and signals in one loop.
#pragma once

#include "virtual-printer/shell/options.h"

namespace virtual_printer {

/// Runs until it is asked to end: by SIGINT, SIGTERM or SIGHUP, or by a control line.
void runProgram(Options options);

}  // namespace virtual_printer
