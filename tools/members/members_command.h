// `zentaro members`: what a host can call.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addMembersCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
