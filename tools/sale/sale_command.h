// `zentaro sale`: prints a whole document.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addSaleCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
