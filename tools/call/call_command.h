// `zentaro call`: one member of a printer object, from the command line.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addCallCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
