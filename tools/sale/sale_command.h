// `zentaro sale`: prints a whole document.
#pragma once

#include <CLI/CLI.hpp>

namespace zentaro::tools {

void addSaleCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
