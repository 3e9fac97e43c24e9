// `zentaro trace`.
#pragma once

#include <CLI/CLI.hpp>

namespace zentaro::tools {

void addTraceCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
