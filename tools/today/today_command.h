// `zentaro today`, in Spanish `hoy`: what was sold, to be read or to be sent.
#pragma once

namespace CLI {
class App;
}

namespace zentaro::tools {

void addTodayCommand(CLI::App& app, int& status);

}  // namespace zentaro::tools
