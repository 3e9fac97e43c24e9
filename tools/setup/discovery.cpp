// Looking and asking, by the means of doctor.
#include "tools/setup/discovery.h"

#include "automation/automation_error.h"
#include "serial/modCOMM.h"
#include "tools/connection/connection.h"

namespace zentaro::tools {

Discovery lookAt(const SerialDevice& device) {
  Discovery discovery{device, examinePort("--device", device.path, true)};
  const Finding finding = judgePort(discovery.port);
  if (finding.isProblem) discovery.findings.add(device.path, finding);
  return discovery;
}

void ask(Discovery& discovery, const PortOptions& options) {
  constexpr int shortTimeout = 2, shortPatience = 5;  // seconds; a printer that is there answers at once
  PortOptions port = options;
  port.port.reset();
  port.device = discovery.device.path;
  port.timeout = options.timeout.value_or(shortTimeout);
  port.giveUp = options.giveUp.value_or(shortPatience);
  try {
    Connection connection(port);
    discovery.wasAsked = true;
    discovery.printer = examinePrinter(connection);
    judgePrinter(discovery.printer, discovery.device.path, connection.portWords(), discovery.findings);
  } catch (const AutomationError& error) {
    std::u16string record;
    discovery.findings.add(discovery.device.path,
                           judgeOpening(modCOMM::CommErrorText(record), error.what(), discovery.port));
  }
}

}  // namespace zentaro::tools
