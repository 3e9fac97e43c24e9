// `zentaro setup`, in Spanish `instalar`: from an adapter that was just plugged in to a port that works.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addSetupCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
