// Shows the records of two status requests.
#include "status/status_command.h"

#include <memory>

#include "common/guarded.h"
#include "common/report.h"

namespace zentaro::tools {

void addStatusCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<ReportOptions>();
  CLI::App* command = addReport(app, *options, "status", "Show the printer's status, counters and clock");
  command->callback([options, &status] {
    status = guarded([&] { return showRecords(*options, {{"GetStatusN", {}}, {"GetStatusHASAR", {}}}); });
  });
}

}  // namespace zentaro::tools
