// Sockets of Windows. Each wait is a select with what is left of the deadline.
#include "base/http/socket.h"

#include <winsock2.h>

#include <algorithm>

namespace zentaro::http {
namespace {

SOCKET nativeOf(SocketHandle socket) { return static_cast<SOCKET>(socket); }

enum class For { Reading, Writing };

bool isReady(SocketHandle socket, For use, Clock::time_point deadline) {
  const auto left =
      std::chrono::ceil<std::chrono::microseconds>(std::max(deadline - Clock::now(), Clock::duration::zero()))
          .count();
  timeval limit{static_cast<long>(left / 1'000'000), static_cast<long>(left % 1'000'000)};
  fd_set wanted{1, {nativeOf(socket)}};
  const bool isReading = use == For::Reading;
  return ::select(0, isReading ? &wanted : nullptr, isReading ? nullptr : &wanted, nullptr, &limit) > 0;
}

bool isAgain() { return ::WSAGetLastError() == WSAEWOULDBLOCK; }

}  // namespace

void prepareSocket(SocketHandle socket) {
  ::SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, 0);
  const BOOL yes = TRUE;
  ::setsockopt(nativeOf(socket), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&yes), sizeof yes);
  u_long neverBlocks = 1;
  ::ioctlsocket(nativeOf(socket), static_cast<long>(FIONBIO), &neverBlocks);
}

void takeDoor(SocketHandle listener) {
  const BOOL yes = TRUE;
  ::setsockopt(nativeOf(listener), SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<const char*>(&yes),
               sizeof yes);
}

std::ptrdiff_t receiveSome(SocketHandle socket, char* bytes, std::size_t size, Clock::time_point deadline) {
  while (isReady(socket, For::Reading, deadline)) {
    const int count = ::recv(nativeOf(socket), bytes, static_cast<int>(size), 0);
    if (count >= 0) return count;
    if (!isAgain()) return -1;
  }
  return -1;
}

bool sendAll(SocketHandle socket, const char* bytes, std::size_t size, Clock::time_point deadline) {
  while (size > 0) {
    if (!isReady(socket, For::Writing, deadline)) return false;
    const int count = ::send(nativeOf(socket), bytes, static_cast<int>(size), 0);
    if (count < 0 && !isAgain()) return false;
    if (count < 0) continue;
    bytes += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

bool isConnected(SocketHandle socket) {
  char byte = 0;
  const int count = ::recv(nativeOf(socket), &byte, 1, MSG_PEEK);
  return count > 0 || (count < 0 && isAgain());
}

void shutDown(SocketHandle socket) { ::shutdown(nativeOf(socket), SD_BOTH); }

void endSending(SocketHandle socket) { ::shutdown(nativeOf(socket), SD_SEND); }

void closeSocket(SocketHandle socket) { ::closesocket(nativeOf(socket)); }

void widenDoor(SocketHandle listener) { ::listen(nativeOf(listener), SOMAXCONN); }

std::size_t descriptorLimit() { return 4096; }  // sockets are bounded by memory alone

}  // namespace zentaro::http
