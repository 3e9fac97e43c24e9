// `zentaro cierre`: the X or Z closing.
#pragma once

#include "commands.h"

namespace zentaro::tools {

void addCierreCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
