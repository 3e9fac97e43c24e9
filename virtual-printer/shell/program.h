// The running printer: line, paper and signals in one loop.
#pragma once

#include "virtual-printer/shell/options.h"

namespace printer {

/// Runs until SIGINT, SIGTERM or SIGHUP; the exit code.
int runProgram(Options options);

}  // namespace printer
