// `zentaro demo`: a sale and the end of the day on a virtual printer.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addDemoCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
