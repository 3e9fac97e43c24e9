// Stream sockets of Windows.
#include "platform/sockets.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace zentaro::sockets {
namespace {

using std::chrono::microseconds;
using std::chrono::steady_clock;

// By the names of newer headers: TCP_MAXRT (in seconds), TCP_KEEPCNT, SIO_KEEPALIVE_VALS.
constexpr int longestRepetition = 5, keepAliveCount = 16;
constexpr DWORD keepAliveValues = _WSAIOW(IOC_VENDOR, 4);

SOCKET native(Number socket) { return static_cast<SOCKET>(socket); }

std::uint32_t lastError() { return static_cast<std::uint32_t>(::WSAGetLastError()); }

template <class Value>
void set(SOCKET socket, int level, int option, const Value& value) {
  ::setsockopt(socket, level, option, reinterpret_cast<const char*>(&value), sizeof value);
}

/// What a system does not know yet, it leaves out.
void prepare(SOCKET socket) {
  u_long neverBlocks = 1;
  ::ioctlsocket(socket, static_cast<long>(FIONBIO), &neverBlocks);
  set(socket, SOL_SOCKET, SO_LINGER, linger{1, 0});
  set(socket, IPPROTO_TCP, longestRepetition, DWORD{5});
  set(socket, IPPROTO_TCP, TCP_NODELAY, DWORD{1});
  u_long onAndMilliseconds[] = {1, 10'000, 5'000};
  DWORD returned = 0;
  ::WSAIoctl(socket, keepAliveValues, onAndMilliseconds, sizeof onAndMilliseconds, nullptr, 0, &returned,
             nullptr, nullptr);
  set(socket, IPPROTO_TCP, keepAliveCount, DWORD{3});
}

Moved moved(int result) {
  if (result >= 0) return {static_cast<std::size_t>(result), 0};
  const std::uint32_t error = lastError();
  return {0, error == WSAEWOULDBLOCK ? 0 : error};
}

/// The system wants to be told before the first use of sockets.
bool isStarted() {
  static const bool started = [] {
    WSADATA data;
    return ::WSAStartup(MAKEWORD(2, 2), &data) == 0;
  }();
  return started;
}

}  // namespace

const Codes codes{ERROR_INVALID_NAME, ERROR_INVALID_HANDLE, ERROR_BUSY, WSAETIMEDOUT, WSAECONNRESET};

std::vector<Address> addressesOf(const TcpName& name, std::uint32_t& error) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const int result =
      isStarted() ? ::getaddrinfo(name.host.c_str(), name.port.c_str(), &hints, &found) : WSASYSNOTREADY;
  if (result != 0) {
    error = static_cast<std::uint32_t>(result);
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
  const SOCKET socket =
      ::WSASocketW(record.ss_family, SOCK_STREAM, IPPROTO_TCP, nullptr, 0, WSA_FLAG_OVERLAPPED);
  if (socket == INVALID_SOCKET) {
    error = lastError();
    return none;
  }
  ::SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, 0);
  prepare(socket);
  const auto* const target = reinterpret_cast<const sockaddr*>(&record);
  if (::connect(socket, target, static_cast<int>(address.size())) == 0 || lastError() == WSAEWOULDBLOCK)
    return static_cast<Number>(socket);
  error = lastError();
  ::closesocket(socket);
  return none;
}

std::uint32_t connectionError(Number socket) {
  int error = 0, size = sizeof error;
  const int result =
      ::getsockopt(native(socket), SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error), &size);
  return result != 0 ? lastError() : static_cast<std::uint32_t>(error);
}

bool waitUntilReady(Number socket, For use, steady_clock::time_point deadline) {
  const auto left = std::chrono::ceil<microseconds>(std::max(deadline - steady_clock::now(), {})).count();
  timeval limit{static_cast<long>(left / 1'000'000), static_cast<long>(left % 1'000'000)};
  fd_set wanted{1, {native(socket)}}, broken = wanted;  // a connection that fails shows only in the third set
  fd_set* const reading = use == For::Reading ? &wanted : nullptr;
  fd_set* const writing = use == For::Writing ? &wanted : nullptr;
  return ::select(0, reading, writing, &broken, &limit) > 0;
}

std::uint32_t bytesWaiting(Number socket) {
  u_long count = 0;
  return ::ioctlsocket(native(socket), FIONREAD, &count) != 0 ? 0 : static_cast<std::uint32_t>(count);
}

Moved receive(Number socket, char* buffer, std::size_t count, Receive how) {
  const int result =
      ::recv(native(socket), buffer, static_cast<int>(count), how == Receive::Look ? MSG_PEEK : 0);
  Moved got = moved(result);
  got.isEnd = result == 0 && count > 0;
  return got;
}

Moved send(Number socket, const char* bytes, std::size_t count) {
  return moved(::send(native(socket), bytes, static_cast<int>(count), 0));
}

void close(Number socket) { ::closesocket(native(socket)); }

}  // namespace zentaro::sockets
