// `zentaro printer`: the virtual printer.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addPrinterCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
