// `zentaro settings`: list, get and set.
#pragma once

#include <CLI/CLI.hpp>

namespace zentaro::tools {

void addSettingsCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
