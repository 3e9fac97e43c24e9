// `zentaro status`: the printer's status, counters and clock.
#pragma once

#include "commands.h"

namespace zentaro::tools {

void addStatusCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
