// `zentaro host`: the library for a program in any language, one JSON-RPC request and response per line.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addHostCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
