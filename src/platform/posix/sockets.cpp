// Stream sockets of a POSIX system.
#include "platform/sockets.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "platform/posix/descriptor.h"

namespace zentaro::sockets {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

std::uint32_t lastError() { return static_cast<std::uint32_t>(errno); }

void set(int socket, int level, int option, int value) {
  ::setsockopt(socket, level, option, &value, sizeof value);
}

void prepare(int socket) {
  const linger discard{1, 0};
  ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &discard, sizeof discard);
  set(socket, IPPROTO_TCP, TCP_USER_TIMEOUT, 5000);
  set(socket, IPPROTO_TCP, TCP_NODELAY, 1);
  set(socket, SOL_SOCKET, SO_KEEPALIVE, 1);
  set(socket, IPPROTO_TCP, TCP_KEEPIDLE, 10);
  set(socket, IPPROTO_TCP, TCP_KEEPINTVL, 5);
  set(socket, IPPROTO_TCP, TCP_KEEPCNT, 3);
}

Moved moved(ssize_t result) {
  if (result >= 0) return {static_cast<std::size_t>(result), 0};
  const bool isForNow = errno == EAGAIN || errno == EINTR;
  return {0, isForNow ? 0 : lastError()};
}

}  // namespace

const Codes codes{EINVAL, EBADF, EBUSY, ETIMEDOUT, ECONNRESET};

std::vector<Address> addressesOf(const TcpName& name, std::uint32_t& error) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (const int result = ::getaddrinfo(name.host.c_str(), name.port.c_str(), &hints, &found); result != 0) {
    error =
        result == EAI_SYSTEM ? lastError() : ENXIO;  // the resolver's own reasons are no codes of the system
    return {};
  }
  const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, ::freeaddrinfo);
  std::vector<Address> addresses;
  for (; found != nullptr; found = found->ai_next) {
    const auto* const bytes = reinterpret_cast<const std::byte*>(found->ai_addr);
    addresses.emplace_back(bytes, bytes + found->ai_addrlen);
  }
  return addresses;
}

Number beginConnection(const Address& address, std::uint32_t& error) {
  sockaddr_storage record{};
  std::memcpy(&record, address.data(), std::min(address.size(), sizeof record));
  posix::Descriptor socket(::socket(record.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (socket.isOpen()) {
    prepare(socket.number());
    const auto* const target = reinterpret_cast<const sockaddr*>(&record);
    const int result = ::connect(socket.number(), target, static_cast<socklen_t>(address.size()));
    if (result == 0 || errno == EINPROGRESS || errno == EINTR) return socket.release();
  }
  error = lastError();
  return none;
}

std::uint32_t connectionError(Number socket) {
  int error = 0;
  socklen_t size = sizeof error;
  const int result = ::getsockopt(static_cast<int>(socket), SOL_SOCKET, SO_ERROR, &error, &size);
  return result < 0 ? lastError() : static_cast<std::uint32_t>(error);
}

bool waitUntilReady(Number socket, For use, steady_clock::time_point deadline) {
  constexpr milliseconds longest = std::chrono::hours(1);  // poll() counts in an int
  for (;;) {
    pollfd state{static_cast<int>(socket), static_cast<short>(use == For::Reading ? POLLIN : POLLOUT), 0};
    const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
    if (::poll(&state, 1, static_cast<int>(std::clamp(left, milliseconds(0), longest).count())) > 0)
      return true;
    if (steady_clock::now() >= deadline) return false;
  }
}

std::uint32_t bytesWaiting(Number socket) {
  int count = 0;
  return ::ioctl(static_cast<int>(socket), FIONREAD, &count) < 0 ? 0 : static_cast<std::uint32_t>(count);
}

Moved receive(Number socket, char* buffer, std::size_t count, Receive how) {
  const ssize_t result = ::recv(static_cast<int>(socket), buffer, count, how == Receive::Look ? MSG_PEEK : 0);
  Moved got = moved(result);
  got.isEnd = result == 0 && count > 0;
  return got;
}

Moved send(Number socket, const char* bytes, std::size_t count) {
  return moved(::send(static_cast<int>(socket), bytes, count, MSG_NOSIGNAL));
}

void close(Number socket) { const posix::Descriptor closed(static_cast<int>(socket)); }

}  // namespace zentaro::sockets
