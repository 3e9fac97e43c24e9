// The library as a program uses it, on a device of the caller's.
#pragma once

#include <memory>
#include <string>

#include "platform/services.h"
#include "printer/czentaro.h"

namespace bench {

class Library : zentaro::SettingsStore {
 public:
  explicit Library(std::string device, int timeOut = 2, int port = 1)
      : device_(std::move(device)), timeOut_(timeOut), port_(port) {
    open();
  }
  zentaro::CZentaro& printer() { return *printer_; }
  void open() {
    printer_ = std::make_unique<zentaro::CZentaro>();
    printer_->CommPort = port_;
    printer_->PortOpen(true);
  }
  void close() { printer_.reset(); }

  void exchange() { printer_->PasarLineaFactura("CAFE MOLIDO", 12.5, 2, 16); }

 private:
  std::u16string read(std::string_view, std::string_view, std::string_view key,
                      std::u16string_view fallback) override {
    if (key == "COM" + std::to_string(port_)) return zentaro::utf16(device_);
    if (key == "TimeOutZT") return zentaro::utf16(std::to_string(timeOut_));
    return std::u16string(fallback);
  }
  zentaro::Services withOwnSettings() {
    zentaro::Services services = zentaro::services();
    services.settings = this;
    return services;
  }

  std::string device_;
  int timeOut_, port_;
  zentaro::ServicesScope scope_{withOwnSettings()};
  std::unique_ptr<zentaro::CZentaro> printer_;
};

}  // namespace bench
