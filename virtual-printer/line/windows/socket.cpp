// Sockets of Windows.
#include "virtual-printer/line/socket.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace virtual_printer {
namespace {

SOCKET nativeOf(Handle handle) { return static_cast<SOCKET>(handle); }
SOCKET nativeOf(const Socket& socket) { return nativeOf(socket.handle()); }

std::string lastReason() { return std::system_category().message(::WSAGetLastError()); }

// The system wants to be told before the first use of sockets.
void start() {
  static const bool isStarted = [] {
    WSADATA data;
    return ::WSAStartup(MAKEWORD(2, 2), &data) == 0;
  }();
  if (!isStarted) throw std::runtime_error("WSAStartup: " + lastReason());
}

// No child process gets it, and nothing waits for it.
Socket prepared(SOCKET socket) {
  if (socket == INVALID_SOCKET) return Socket{};
  u_long neverBlocks = 1;
  ::ioctlsocket(socket, static_cast<long>(FIONBIO), &neverBlocks);
  ::SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, 0);
  return Socket{static_cast<Handle>(socket)};
}

void set(const Socket& socket, int level, int option, DWORD value) {
  ::setsockopt(nativeOf(socket), level, option, reinterpret_cast<const char*>(&value), sizeof value);
}

Address numeric(const sockaddr_storage& address, socklen_t length) {
  std::array<char, NI_MAXHOST> host{};
  std::array<char, NI_MAXSERV> port{};
  ::getnameinfo(reinterpret_cast<const sockaddr*>(&address), length, host.data(), host.size(), port.data(),
                port.size(), NI_NUMERICHOST | NI_NUMERICSERV);
  return {host.data(), std::atoi(port.data())};
}

}  // namespace

void Socket::close() {
  if (isOpen()) ::closesocket(nativeOf(std::exchange(handle_, noHandle)));
}

// The system's poll takes neither an empty list nor a handle that is none.
bool waitFor(WatchList& watched, std::chrono::milliseconds patience) {
  std::vector<WSAPOLLFD> polled;
  for (const Watched& entry : watched)
    if (entry.handle != noHandle) polled.push_back({nativeOf(entry.handle), POLLRDNORM, 0});
  if (polled.empty()) std::this_thread::sleep_for(patience);
  const bool isAny = !polled.empty() && ::WSAPoll(polled.data(), static_cast<ULONG>(polled.size()),
                                                  static_cast<int>(patience.count())) > 0;
  for (Watched& entry : watched)
    entry.hasSomething = isAny && std::any_of(polled.begin(), polled.end(), [&](const WSAPOLLFD& seen) {
                           return seen.fd == nativeOf(entry.handle) && seen.revents != 0;
                         });
  return isAny;
}

Socket listenAt(Address& address) {
  start();
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (const int error =
          ::getaddrinfo(address.host.c_str(), std::to_string(address.port).c_str(), &hints, &found);
      error != 0)
    throw std::runtime_error(authority(address) + ": " + std::system_category().message(error));
  const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner{found, ::freeaddrinfo};
  Socket socket = prepared(::socket(found->ai_family, SOCK_STREAM, IPPROTO_TCP));
  set(socket, SOL_SOCKET, SO_EXCLUSIVEADDRUSE, 1);
  constexpr int waitingClients = 8;
  if (::bind(nativeOf(socket), found->ai_addr, static_cast<int>(found->ai_addrlen)) != 0 ||
      ::listen(nativeOf(socket), waitingClients) != 0)
    throw std::runtime_error(authority(address) + ": " + lastReason());
  sockaddr_storage own{};
  socklen_t length = sizeof own;
  if (::getsockname(nativeOf(socket), reinterpret_cast<sockaddr*>(&own), &length) == 0)
    address = numeric(own, length);
  return socket;
}

Socket acceptOn(const Socket& listening) { return prepared(::accept(nativeOf(listening), nullptr, nullptr)); }

// Sockets are not counted among the files here.
bool isNearLimit(const Socket&) { return false; }

std::optional<std::string> receive(const Socket& socket) {
  std::array<char, 4096> buffer;
  const int count = ::recv(nativeOf(socket), buffer.data(), buffer.size(), 0);
  if (count > 0) return std::string{buffer.data(), static_cast<std::size_t>(count)};
  if (count < 0 && ::WSAGetLastError() == WSAEWOULDBLOCK) return std::string{};
  return std::nullopt;
}

void send(const Socket& socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const int count = ::send(nativeOf(socket), bytes.data(), static_cast<int>(bytes.size()), 0);
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void prepareLine(const Socket& host) {
  // By the names of newer headers: TCP_KEEPIDLE, TCP_KEEPINTVL, TCP_KEEPCNT.
  constexpr int keepIdle = 3, keepInterval = 17, keepCount = 16;
  set(host, IPPROTO_TCP, TCP_NODELAY, 1);
  set(host, SOL_SOCKET, SO_KEEPALIVE, 1);
  set(host, IPPROTO_TCP, keepIdle, 10);
  set(host, IPPROTO_TCP, keepInterval, 5);
  set(host, IPPROTO_TCP, keepCount, 3);
}

std::string peerOf(const Socket& socket) {
  sockaddr_storage address{};
  socklen_t length = sizeof address;
  if (::getpeername(nativeOf(socket), reinterpret_cast<sockaddr*>(&address), &length) != 0) return "?";
  return authority(numeric(address, length));
}

}  // namespace virtual_printer
