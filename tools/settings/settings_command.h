// `zentaro settings`: list, get and set.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addSettingsCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
