// `zentaro serve token`: who may ask the service.
#pragma once

#include <functional>
#include <memory>

#include "tools/serve/serve_options.h"

namespace CLI {
class App;
}

namespace zentaro::tools {

/// `complete` fills options in that stand in a file.
void addTokenCommand(CLI::App& serve, const std::shared_ptr<ServeOptions>& options,
                     const std::function<void()>& complete, int& status);

}  // namespace zentaro::tools
