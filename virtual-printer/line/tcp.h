// The line over TCP, for bridges between serial ports and networks. One host at a time, as on a cable.
#pragma once

#include <functional>

#include "virtual-printer/line/address.h"
#include "virtual-printer/line/listener.h"

namespace printer {

class TcpLine final : public HostLine {
 public:
  using Notice = std::function<void(const std::string&)>;

  /// The notice is given each client that is refused while another has the line.
  TcpLine(Address address, Notice refused) : address_{std::move(address)}, refused_{std::move(refused)} {}

  /// Listens again at the same address; port 0 becomes a free one, once.
  void connect() override;
  void hangUp() override;
  std::string name() const override { return authority(address_); }

  void watch(std::vector<pollfd>& watched) const override;
  std::string read(const std::vector<pollfd>& polled) override;
  void write(std::string_view bytes) override;

 private:
  void take(Descriptor client);
  std::string readHost();

  Address address_;
  Notice refused_;
  Listener listener_;
  Descriptor host_;
};

}  // namespace printer
