// A printer object on an open port, and the options by which a user says which port.
//
// A real port is used only when it is named, by its number or by its device. Otherwise a virtual printer is
// started; where a port is configured, only when the user asks for it.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>

#include "automation/object.h"
#include "common/interruption.h"
#include "common/overlay_settings.h"
#include "common/printer_line.h"
#include "common/virtual_printer.h"
#include "platform/services.h"
#include "printer/czentaro.h"

namespace zentaro::tools {

struct PortOptions {
  std::optional<int> port = {};     // --port: 1 to 8, with the device that the user's settings give it
  std::string device = {};          // --device: a path, whatever the settings say
  bool isVirtual = false;           // --virtual: a virtual printer, although a port is configured
  std::optional<int> timeout = {};  // --timeout: whole seconds, instead of the setting TimeOutZT
  std::optional<int> giveUp = {};   // --give-up: how many seconds a lost answer is waited for
  std::string traceFile = {};       // --trace: what is sent and read, by the object and by the driver
};

/// Adds --port, --device, --virtual, --timeout, --give-up and --trace; `options` must live until
/// the command line is parsed.
void addPortOptions(CLI::App& command, PortOptions& options);

class Connection {
 public:
  /// Opens the port. Raises AutomationError 40001, or std::runtime_error when a virtual printer cannot be
  /// started, or is not asked for where a port is configured. Says on standard error when it starts one, with
  /// these further options of zentaro-printer. A trace file that cannot be opened raises its file error.
  explicit Connection(const PortOptions& options, const std::vector<std::string>& virtualPrinterOptions = {});
  /// Closes the port, and ends the virtual printer.
  ~Connection() = default;

  CZentaro& printer() { return *static_cast<CZentaro*>(object_.instance()); }
  /// The same printer object for calls by name.
  const Object& object() const { return object_; }
  PrinterLine& line() { return *line_; }
  /// Null on a real port.
  const VirtualPrinter* virtualPrinter() const { return virtualPrinter_.get(); }
  /// The options by which another command uses the same printer: "--device /dev/ttyUSB0".
  const std::string& portWords() const { return portWords_; }

 private:
  void traceTo(const std::string& path);
  void traceObject(bool goesOnWithout);

  Interruption interruption_;
  std::unique_ptr<VirtualPrinter> virtualPrinter_;
  OverlaySettings settings_;
  ServicesScope scope_;
  Object object_;
  std::optional<PrinterLine> line_;
  std::string portWords_;
};

/// The setting TimeOutZT as it is in force.
int timeOutSeconds();

/// What is said of everything that a virtual printer prints.
std::string virtualNotice();

}  // namespace zentaro::tools
