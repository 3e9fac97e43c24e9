// `zentaro cierre`: the X or Z closing.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addCierreCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
