// Sockets of POSIX systems. Each wait is a poll with what is left of the deadline.
#include "base/http/socket.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace zentaro::http {
namespace {

int number(SocketHandle socket) { return static_cast<int>(socket); }

bool isReady(SocketHandle socket, short event, Clock::time_point deadline) {
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd watched{number(socket), event, 0};
    const int ready = ::poll(&watched, 1, static_cast<int>(std::max<std::int64_t>(left, 0)));
    if (ready > 0) return true;
    if (ready == 0 || errno != EINTR) return false;
  }
}

bool isAgain() { return errno == EINTR || errno == EAGAIN; }

}  // namespace

void prepareSocket(SocketHandle socket) {
  ::fcntl(number(socket), F_SETFD, FD_CLOEXEC);
  const int yes = 1;
  ::setsockopt(number(socket), IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
}

// A port in use cannot be taken all the same, and one that was given up can be at once.
void takeDoor(SocketHandle listener) {
  const int yes = 1;
  ::setsockopt(number(listener), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

std::ptrdiff_t receiveSome(SocketHandle socket, char* bytes, std::size_t size, Clock::time_point deadline) {
  while (isReady(socket, POLLIN, deadline)) {
    const ssize_t count = ::recv(number(socket), bytes, size, MSG_DONTWAIT);
    if (count >= 0) return count;
    if (!isAgain()) return -1;
  }
  return -1;
}

bool sendAll(SocketHandle socket, const char* bytes, std::size_t size, Clock::time_point deadline) {
  while (size > 0) {
    if (!isReady(socket, POLLOUT, deadline)) return false;
    const ssize_t count = ::send(number(socket), bytes, size, MSG_DONTWAIT | MSG_NOSIGNAL);
    if (count < 0 && !isAgain()) return false;
    if (count < 0) continue;
    bytes += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

bool isConnected(SocketHandle socket) {
  char byte = 0;
  const ssize_t count = ::recv(number(socket), &byte, 1, MSG_PEEK | MSG_DONTWAIT);
  return count > 0 || (count < 0 && isAgain());
}

void shutDown(SocketHandle socket) { ::shutdown(number(socket), SHUT_RDWR); }

void endSending(SocketHandle socket) { ::shutdown(number(socket), SHUT_WR); }

void closeSocket(SocketHandle socket) { ::close(number(socket)); }

void widenDoor(SocketHandle listener) { ::listen(number(listener), SOMAXCONN); }

std::size_t descriptorLimit() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return 256;
  return static_cast<std::size_t>(limit.rlim_cur);
}

}  // namespace zentaro::http
