// `zentaro trace`.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addTraceCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
