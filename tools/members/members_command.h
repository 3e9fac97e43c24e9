// `zentaro members`: what a host can call.
#pragma once

#include <CLI/CLI.hpp>

namespace zentaro::tools {

void addMembersCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
