// The line over TCP, for bridges between serial ports and networks. One host at a time, as on a cable.
#pragma once

#include <functional>

#include "virtual-printer/line/host_line.h"
#include "virtual-printer/line/listener.h"

namespace virtual_printer {

class TcpLine final : public HostLine {
 public:
  using Notice = std::function<void(const std::string&)>;

  /// The notice is given each client that is refused while another has the line.
  TcpLine(Address address, Notice refused) : address_{std::move(address)}, refused_{std::move(refused)} {}

  /// Listens again at the same address; port 0 becomes a free one, once.
  void connect() override;
  void hangUp() override;
  std::string name() const override { return authority(address_); }

  void watch(WatchList& watched) const override;
  std::string read(const WatchList& watched) override;
  void write(std::string_view bytes) override;

 private:
  void take(Socket client);

  Address address_;
  Notice refused_;
  Listener listener_;
  Socket host_;
};

}  // namespace virtual_printer
