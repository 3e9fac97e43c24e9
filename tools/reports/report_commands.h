// `zentaro status` and `zentaro cierre`: what the printer says of itself, and its closings with their
// figures.
#pragma once

#include <CLI/CLI.hpp>

namespace zentaro::tools {

void addStatusCommand(CLI::App& app, int& status);
void addCierreCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
