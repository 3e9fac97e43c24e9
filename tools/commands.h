// The subcommands of `zentaro`.
#pragma once

#include <CLI/CLI.hpp>

namespace zentaro::tools {

/// Adds a subcommand to `app`. When it is the one that was asked for, its callback stores the exit
/// status in `status`.
using AddCommand = void (*)(CLI::App& app, int& status);

/// Adds all of them, in the order in which the help lists them.
void addCommands(CLI::App& app, int& status);

}  // namespace zentaro::tools
