// A printer object on an open port.
//
// A real port is used only when it is named, by its number or by its device. Otherwise a virtual
// printer is started; where a port is configured, and for what must not go to another printer by
// mistake, only when the user asks for it.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "automation/object.h"
#include "base/system/interruption.h"
#include "platform/services.h"
#include "printer/czentaro.h"
#include "till/line/overlay_settings.h"
#include "till/line/printer_line.h"
#include "tools/connection/console_teller.h"
#include "tools/connection/port_options.h"
#include "tools/connection/virtual_printer.h"

namespace zentaro::tools {

/// When a virtual printer may be started that nobody asked for.
enum class Unasked { Virtual, Nothing };

class Connection {
 public:
  /// Opens the port. Raises AutomationError 40001, or std::runtime_error when a virtual printer cannot be started, or
  /// is not asked for where it has to be, when the settings are there and cannot be read, and for a trace that the
  /// options name and that cannot be opened. Says on standard error when it starts a virtual printer, with these
  /// further options of zentaro-printer, and what the observer does not take from it.
  explicit Connection(const PortOptions& options, const std::vector<std::string>& virtualPrinterOptions = {},
                      Unasked unasked = Unasked::Virtual, till::LineObserver* observer = nullptr);
  /// Closes the port, and ends the virtual printer.
  ~Connection() = default;

  CZentaro& printer() { return *static_cast<CZentaro*>(object_.instance()); }
  /// The same printer object for calls by name.
  const Object& object() const { return object_; }
  till::PrinterLine& line() { return *line_; }
  /// Gets line and printer in step; raises std::runtime_error when they do not get there.
  void getInStep();
  /// Null on a real port.
  const VirtualPrinter* virtualPrinter() const { return virtualPrinter_.get(); }
  /// The path behind the open port.
  const std::string& device() const { return device_; }
  /// portWordsOf() the options.
  const std::string& portWords() const { return portWords_; }

 private:
  void openPort(std::chrono::seconds wait);
  void traceTo(const std::string& path);
  void traceObject(bool goesOnWithout);

  base::Interruption interruption_;
  ConsoleTeller teller_;
  std::unique_ptr<VirtualPrinter> virtualPrinter_;
  till::OverlaySettings settings_;
  ServicesScope scope_;
  Object object_;
  std::optional<till::PrinterLine> line_;
  std::string device_, portWords_;
};

/// Raises std::runtime_error when settings are there and cannot be read: what they name would be passed over.
void demandReadableSettings();

/// The options by which another command uses the same printer: "--device /dev/ttyUSB0".
std::string portWordsOf(const PortOptions& options);

/// The device that the options name, as the books and other programs call it; empty for a virtual printer.
std::string deviceNamedBy(const PortOptions& options);

}  // namespace zentaro::tools
