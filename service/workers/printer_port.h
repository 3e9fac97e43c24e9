// The printer object of a thread on its device, whatever the settings say of the ports.
#pragma once

#include <string>

#include "platform/services.h"
#include "printer/czentaro.h"
#include "till/line/overlay_settings.h"

namespace zentaro::service {

class PrinterPort {
 public:
  explicit PrinterPort(const std::string& device);
  PrinterPort(const PrinterPort&) = delete;
  PrinterPort& operator=(const PrinterPort&) = delete;

  /// Raises AutomationError when the port cannot be opened. Does nothing on an open one.
  void open();
  CZentaro& printer() { return printer_; }

 private:
  till::OverlaySettings settings_;
  ServicesScope scope_;
  CZentaro printer_;
};

}  // namespace zentaro::service
