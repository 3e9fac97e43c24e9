// The list of subcommands.
#include "commands.h"

#include <array>

#include "host/host_command.h"

namespace zentaro::tools {

namespace {

constexpr std::array<AddCommand, 1> commands{addHostCommand};

}  // namespace

void addCommands(CLI::App& app, int& status) {
  for (const AddCommand add : commands) add(app, status);
}

}  // namespace zentaro::tools
