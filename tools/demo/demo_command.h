// `zentaro demo`: a sale and the end of the day on a virtual printer.
#pragma once

#include <CLI/CLI.hpp>

namespace zentaro::tools {

void addDemoCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
