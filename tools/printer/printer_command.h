// `zentaro printer`: the virtual printer.
#pragma once

#include <CLI/CLI.hpp>

namespace zentaro::tools {

void addPrinterCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
