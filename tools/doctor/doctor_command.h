// `zentaro doctor`: why the printer does not print.
#pragma once

#include <CLI/CLI.hpp>

namespace zentaro::tools {

void addDoctorCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
