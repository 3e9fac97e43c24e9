// Opening the port that the options name.
#include "common/connection.h"

#include <iostream>

#include "common/known_settings.h"
#include "interface/library.h"

namespace zentaro::tools {

namespace {

constexpr int ownPort = 1;  // the number under which a device that was named by its path is opened

std::unique_ptr<VirtualPrinter> printerFor(const PortOptions& options,
                                           const std::vector<std::string>& words) {
  if (options.port || !options.device.empty()) return nullptr;
  auto printer = std::make_unique<VirtualPrinter>(words);
  std::cerr << "zentaro: no --port and no --device: using a virtual printer on " << printer->device() << '\n';
  return printer;
}

Services withSettings(SettingsStore& settings) {
  Services changed = services();
  changed.settings = &settings;
  return changed;
}

}  // namespace

void addPortOptions(CLI::App& command, PortOptions& options) {
  CLI::Option* port = command.add_option("--port", options.port, "Serial port, by the settings COM1 to COM8")
                          ->check(CLI::Range(1, portCount))
                          ->type_name("N");
  command.add_option("--device", options.device, "Serial device, whatever the settings say")
      ->excludes(port)
      ->type_name("PATH");
  command.add_option("--timeout", options.timeout, "Time-out of an answer, instead of the setting TimeOutZT")
      ->check(CLI::Range(1, 32767))
      ->type_name("SECONDS");
}

Connection::Connection(const PortOptions& options, const std::vector<std::string>& virtualPrinterOptions)
    : virtualPrinter_(printerFor(options, virtualPrinterOptions)),
      settings_(*services().settings),
      scope_(withSettings(settings_)) {
  const std::string device = virtualPrinter_ ? virtualPrinter_->device() : options.device;
  if (!device.empty()) {
    settings_.replace(portSection, portKey(ownPort), utf16(device));
  }
  if (options.timeout) {
    settings_.replace(settingTimeOut.section, settingTimeOut.key, utf16(std::to_string(*options.timeout)));
  }
  object_ = createObject("CZentaro");
  printer().CommPort = options.port.value_or(ownPort);
  printer().PortOpen(true);
}

}  // namespace zentaro::tools
