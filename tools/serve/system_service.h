// The service as one of the system's own, which starts with the machine and without a user.
#pragma once

#include <functional>
#include <memory>

#include "tools/serve/serve_options.h"

namespace CLI {
class App;
}

namespace zentaro::tools {

/// What the running service and whoever started it tell each other.
struct ServeHost {
  std::function<void()> isReady;
  std::function<bool()> isEnding;
};
/// Runs until the host wants it to end; gives the exit status.
using RunServe = std::function<int(const ServeHost&)>;

/// Adds, on Windows alone, `zentaro serve install` and `remove`; `complete` fills options in that stand in a file. What is
/// given back runs the service in this terminal, or as the system's when the system has started it.
std::function<int(const RunServe&)> addServiceCommands(CLI::App& serve,
                                                       const std::shared_ptr<ServeOptions>& options,
                                                       const std::function<void()>& complete, int& status);

}  // namespace zentaro::tools
