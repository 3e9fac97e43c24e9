// The options by which a user says which port, and how long is waited on it.
#pragma once

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace zentaro::tools {

struct PortOptions {
  std::optional<int> port = {};     // --port: 1 to 8, with the device that the user's settings give it
  std::string device = {};          // --device: a path, whatever the settings say
  bool isVirtual = false;           // --virtual: a virtual printer, although a port is configured
  std::optional<int> timeout = {};  // --timeout: whole seconds, instead of the setting TimeOutZT
  std::optional<int> giveUp = {};   // --give-up: how many seconds a lost answer is waited for
  std::optional<int> wait = {};     // --wait: how many seconds a port that is in use is waited for
  std::string traceFile = {};       // --trace: what is sent and read, by the object and by the driver
};

/// Adds --port, --device, --virtual, --timeout, --give-up, --wait and --trace; `options` must live until
/// the command line is parsed.
void addPortOptions(CLI::App& command, PortOptions& options);

}  // namespace zentaro::tools
