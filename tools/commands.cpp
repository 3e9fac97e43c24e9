// The list of subcommands.
#include "commands.h"

#include <array>

namespace zentaro::tools {

namespace {

constexpr std::array<AddCommand, 0> commands{};

}  // namespace

void addCommands(CLI::App& app, int& status) {
  for (const AddCommand add : commands) add(app, status);
}

}  // namespace zentaro::tools
