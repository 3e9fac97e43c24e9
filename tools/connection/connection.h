// A printer object on an open port.
//
// A real port is used only when it is named, by its number or by its device. Otherwise a virtual printer is
// started; where a port is configured, only when the user asks for it.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "automation/object.h"
#include "base/system/interruption.h"
#include "platform/services.h"
#include "printer/czentaro.h"
#include "till/line/printer_line.h"
#include "tools/connection/overlay_settings.h"
#include "tools/connection/port_options.h"
#include "tools/connection/virtual_printer.h"

namespace zentaro::tools {

class Connection {
 public:
  /// Opens the port. Raises AutomationError 40001, or std::runtime_error when a virtual printer cannot be
  /// started, or is not asked for where a port is configured. Says on standard error when it starts one, with
  /// these further options of zentaro-printer. Raises std::runtime_error, too, for a trace that the options name
  /// and that cannot be opened.
  explicit Connection(const PortOptions& options, const std::vector<std::string>& virtualPrinterOptions = {});
  /// Closes the port, and ends the virtual printer.
  ~Connection() = default;

  CZentaro& printer() { return *static_cast<CZentaro*>(object_.instance()); }
  /// The same printer object for calls by name.
  const Object& object() const { return object_; }
  PrinterLine& line() { return *line_; }
  /// Null on a real port.
  const VirtualPrinter* virtualPrinter() const { return virtualPrinter_.get(); }
  /// The path behind the open port.
  const std::string& device() const { return device_; }
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
  std::string device_, portWords_;
};

/// The setting TimeOutZT as it is in force.
int timeOutSeconds();

/// What is said of everything that a virtual printer prints.
std::string virtualNotice();

}  // namespace zentaro::tools
