// A listening socket, and the one host that has the line.
#include "virtual-printer/line/tcp.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace printer {
namespace {

// A host that vanished without a word must not keep the line for ever.
void prepare(const Descriptor& host) {
  const auto set = [&](int level, int option, int value) {
    ::setsockopt(host.get(), level, option, &value, sizeof value);
  };
  set(IPPROTO_TCP, TCP_NODELAY, 1);
  set(SOL_SOCKET, SO_KEEPALIVE, 1);
  set(IPPROTO_TCP, TCP_KEEPIDLE, 10);
  set(IPPROTO_TCP, TCP_KEEPINTVL, 5);
  set(IPPROTO_TCP, TCP_KEEPCNT, 3);
}

Address numeric(const sockaddr_storage& address, socklen_t length) {
  std::array<char, NI_MAXHOST> host{};
  std::array<char, NI_MAXSERV> port{};
  ::getnameinfo(reinterpret_cast<const sockaddr*>(&address), length, host.data(), host.size(), port.data(),
                port.size(), NI_NUMERICHOST | NI_NUMERICSERV);
  return {host.data(), std::atoi(port.data())};
}

std::string peerOf(const Descriptor& host) {
  sockaddr_storage address{};
  socklen_t length = sizeof address;
  if (::getpeername(host.get(), reinterpret_cast<sockaddr*>(&address), &length) != 0) return "?";
  return authority(numeric(address, length));
}

}  // namespace

void TcpLine::connect() {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (const int error =
          ::getaddrinfo(address_.host.c_str(), std::to_string(address_.port).c_str(), &hints, &found);
      error != 0)
    throw std::runtime_error("--tcp " + authority(address_) + ": " + ::gai_strerror(error));
  const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner{found, ::freeaddrinfo};
  listener_ = Listener{found->ai_addr, found->ai_addrlen};
  if (!listener_.isOpen())
    throw std::system_error(errno, std::generic_category(), "--tcp " + authority(address_));
  sockaddr_storage own{};
  socklen_t length = sizeof own;
  if (::getsockname(listener_.descriptor(), reinterpret_cast<sockaddr*>(&own), &length) == 0)
    address_ = numeric(own, length);
}

void TcpLine::hangUp() {
  host_.close();
  listener_.close();
}

void TcpLine::watch(std::vector<pollfd>& watched) const {
  listener_.watch(watched);
  watched.push_back({host_.get(), POLLIN, 0});
}

// The host is read first: one that has gone makes room for the next.
std::string TcpLine::read(const std::vector<pollfd>& polled) {
  std::string bytes;
  if (host_.isOpen() && sawSomething(polled, host_.get())) bytes = readHost();
  if (Descriptor client = listener_.accept(polled, {}); client.isOpen()) take(std::move(client));
  return bytes;
}

void TcpLine::take(Descriptor client) {
  if (host_.isOpen()) return refused_(peerOf(client));
  prepare(client);
  host_ = std::move(client);
}

std::string TcpLine::readHost() {
  std::array<char, 4096> buffer;
  const ssize_t count = ::read(host_.get(), buffer.data(), buffer.size());
  if (count > 0) return {buffer.data(), static_cast<std::size_t>(count)};
  if (count == 0 || (errno != EAGAIN && errno != EINTR)) host_.close();
  return {};
}

void TcpLine::write(std::string_view bytes) {
  while (host_.isOpen() && !bytes.empty()) {
    const ssize_t count = ::send(host_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace printer
