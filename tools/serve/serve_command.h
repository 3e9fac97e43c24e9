// `zentaro serve`: the service for web shops and several tills.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addServeCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
