// Here the system's own is a unit of systemd, which the package brings: it runs the same command.
#include "tools/serve/system_service.h"

#include "base/system/interruption.h"

namespace zentaro::tools {

std::function<int(const RunServe&)> addServiceCommands(CLI::App&, const std::shared_ptr<ServeOptions>&,
                                                       const std::function<void()>&, int&) {
  return [](const RunServe& run) { return run({[] {}, base::Interruption::isRequested}); };
}

}  // namespace zentaro::tools
