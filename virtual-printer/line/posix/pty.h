// The line as a pseudo-terminal, whose slave side a host opens like a serial port.
#pragma once

#include "virtual-printer/line/host_line.h"

namespace virtual_printer {

class Pty final : public HostLine {
 public:
  /// A new pseudo-terminal under a new device name.
  void connect() override;
  void hangUp() override;
  std::string name() const override { return device_; }

  void watch(WatchList& watched) const override;
  std::string read(const WatchList& watched) override;
  void write(std::string_view bytes) override;
  /// A host that died leaves the device marked as in exclusive use; lifts the mark when nobody holds the lock.
  void rest() override;

 private:
  int master() const { return static_cast<int>(master_.handle()); }
  int slave() const { return static_cast<int>(slave_.handle()); }

  Socket master_;
  Socket slave_;  // kept open, so that a host closing the port never hangs the line up
  std::string device_;
};

}  // namespace virtual_printer
