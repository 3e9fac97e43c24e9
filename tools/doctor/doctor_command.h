// `zentaro doctor`: why the printer does not print.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addDoctorCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
