// The bell is a datagram socket that is connected to itself.
#include "virtual-printer/line/wake.h"

#include <winsock2.h>

#include <array>
#include <stdexcept>
#include <system_error>

namespace virtual_printer {
namespace {

[[noreturn]] void fail() {
  throw std::runtime_error("socket: " + std::system_category().message(::WSAGetLastError()));
}

Socket madeBell() {
  WSADATA data;
  if (::WSAStartup(MAKEWORD(2, 2), &data) != 0) fail();
  const SOCKET socket = ::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
  if (socket == INVALID_SOCKET) fail();
  Socket bell{static_cast<Handle>(socket)};
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
  int length = sizeof address;
  auto* const record = reinterpret_cast<sockaddr*>(&address);
  u_long neverBlocks = 1;
  if (::bind(socket, record, length) != 0 || ::getsockname(socket, record, &length) != 0 ||
      ::connect(socket, record, length) != 0 ||
      ::ioctlsocket(socket, static_cast<long>(FIONBIO), &neverBlocks) != 0)
    fail();
  return bell;
}

}  // namespace

Wake::Wake() : bell_{madeBell()} {}

void Wake::ring() const noexcept {
  const char one = 1;
  ::send(static_cast<SOCKET>(bell_.handle()), &one, 1, 0);
}

void Wake::quiet() const {
  std::array<char, 64> rung;
  while (::recv(static_cast<SOCKET>(bell_.handle()), rung.data(), rung.size(), 0) > 0) continue;
}

}  // namespace virtual_printer
