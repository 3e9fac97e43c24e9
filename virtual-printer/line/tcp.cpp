// A listening socket, and the one host that has the line.
#include "virtual-printer/line/tcp.h"

#include <stdexcept>

namespace virtual_printer {

void TcpLine::connect() {
  try {
    listener_ = Listener{listenAt(address_)};
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(std::string{"--tcp "} + error.what());
  }
}

void TcpLine::hangUp() {
  host_.close();
  listener_.close();
}

void TcpLine::watch(WatchList& watched) const {
  listener_.watch(watched);
  watched.push_back({host_.handle()});
}

// The host is read first: one that has gone makes room for the next.
std::string TcpLine::read(const WatchList& watched) {
  std::string bytes;
  if (host_.isOpen() && sawSomething(watched, host_.handle())) {
    std::optional<std::string> come = receive(host_);
    if (!come) host_.close();
    bytes = std::move(come).value_or(std::string{});
  }
  if (Socket client = listener_.accept(watched, {}); client.isOpen()) take(std::move(client));
  return bytes;
}

void TcpLine::take(Socket client) {
  if (host_.isOpen()) return refused_(peerOf(client));
  prepareLine(client);
  host_ = std::move(client);
}

void TcpLine::write(std::string_view bytes) {
  if (host_.isOpen()) send(host_, bytes);
}

}  // namespace virtual_printer
