// `zentaro status`: the printer's status, counters and clock.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addStatusCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
