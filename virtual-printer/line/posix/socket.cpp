// Sockets over POSIX.
#include "virtual-printer/line/socket.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace virtual_printer {
namespace {

int descriptorOf(const Socket& socket) { return static_cast<int>(socket.handle()); }

bool isInterruption(int error) { return error == EAGAIN || error == EINTR; }

Address numeric(const sockaddr_storage& address, socklen_t length) {
  std::array<char, NI_MAXHOST> host{};
  std::array<char, NI_MAXSERV> port{};
  ::getnameinfo(reinterpret_cast<const sockaddr*>(&address), length, host.data(), host.size(), port.data(),
                port.size(), NI_NUMERICHOST | NI_NUMERICSERV);
  return {host.data(), std::atoi(port.data())};
}

}  // namespace

void Socket::close() {
  if (isOpen()) ::close(static_cast<int>(std::exchange(handle_, noHandle)));
}

bool waitFor(WatchList& watched, std::chrono::milliseconds patience) {
  std::vector<pollfd> polled;
  polled.reserve(watched.size());
  for (const Watched& entry : watched) polled.push_back({static_cast<int>(entry.handle), POLLIN, 0});
  const bool isAny = ::poll(polled.data(), polled.size(), static_cast<int>(patience.count())) > 0;
  for (std::size_t at = 0; at < polled.size(); ++at)
    watched[at].hasSomething = isAny && polled[at].revents != 0;
  return isAny;
}

Socket listenAt(Address& address) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (const int error =
          ::getaddrinfo(address.host.c_str(), std::to_string(address.port).c_str(), &hints, &found);
      error != 0)
    throw std::runtime_error(authority(address) + ": " + ::gai_strerror(error));
  const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner{found, ::freeaddrinfo};
  Socket socket{::socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
  const int on = 1;
  ::setsockopt(descriptorOf(socket), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  constexpr int waitingClients = 8;
  if (::bind(descriptorOf(socket), found->ai_addr, found->ai_addrlen) != 0 ||
      ::listen(descriptorOf(socket), waitingClients) != 0)
    throw std::runtime_error(authority(address) + ": " + std::strerror(errno));
  sockaddr_storage own{};
  socklen_t length = sizeof own;
  if (::getsockname(descriptorOf(socket), reinterpret_cast<sockaddr*>(&own), &length) == 0)
    address = numeric(own, length);
  return socket;
}

Socket acceptOn(const Socket& listening) {
  return Socket{::accept4(descriptorOf(listening), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK)};
}

// What the printer itself may still want to open: the state file, the paper, a new line after a hang-up.
bool isNearLimit(const Socket& socket) {
  constexpr rlim_t reserve = 8;
  rlimit limit{};
  return ::getrlimit(RLIMIT_NOFILE, &limit) == 0 &&
         static_cast<rlim_t>(socket.handle()) + reserve >= limit.rlim_cur;
}

std::optional<std::string> receive(const Socket& socket) {
  std::array<char, 4096> buffer;
  const ssize_t count = ::read(descriptorOf(socket), buffer.data(), buffer.size());
  if (count > 0) return std::string{buffer.data(), static_cast<std::size_t>(count)};
  if (count < 0 && isInterruption(errno)) return std::string{};
  return std::nullopt;
}

void send(const Socket& socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::send(descriptorOf(socket), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void prepareLine(const Socket& host) {
  const auto set = [&](int level, int option, int value) {
    ::setsockopt(descriptorOf(host), level, option, &value, sizeof value);
  };
  set(IPPROTO_TCP, TCP_NODELAY, 1);
  set(SOL_SOCKET, SO_KEEPALIVE, 1);
  set(IPPROTO_TCP, TCP_KEEPIDLE, 10);
  set(IPPROTO_TCP, TCP_KEEPINTVL, 5);
  set(IPPROTO_TCP, TCP_KEEPCNT, 3);
}

std::string peerOf(const Socket& socket) {
  sockaddr_storage address{};
  socklen_t length = sizeof address;
  if (::getpeername(descriptorOf(socket), reinterpret_cast<sockaddr*>(&address), &length) != 0) return "?";
  return authority(numeric(address, length));
}

}  // namespace virtual_printer
