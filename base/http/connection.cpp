// Reading and writing against limits.
#include "base/http/connection.h"

#include <algorithm>
#include <cstring>

namespace zentaro::http {
namespace {

// How long a client may go on sending what nobody reads any more.
constexpr std::chrono::seconds lingering{2};

}  // namespace

Connection::Connection(SocketHandle socket, const Limits& limits)
    : socket_{socket},
      patience_{limits.request},
      deadline_{Clock::now() + limits.request},
      headLeft_{limits.head} {
  prepareSocket(socket);
}

ssize_t Connection::take(char* bytes, std::size_t size) {
  if (begin_ == end_) {
    const std::ptrdiff_t count = receiveSome(socket_, buffer_.data(), buffer_.size(), deadline_);
    if (count <= 0) return count;
    begin_ = 0;
    end_ = static_cast<std::size_t>(count);
  }
  const std::size_t taken = std::min(size, end_ - begin_);
  std::memcpy(bytes, buffer_.data() + begin_, taken);
  begin_ += taken;
  return static_cast<ssize_t>(taken);
}

ssize_t Connection::read(char* bytes, std::size_t size) {
  if (headLeft_ == 0) return -1;
  const ssize_t count = take(bytes, std::min(size, headLeft_));
  if (count > 0) headLeft_ -= static_cast<std::size_t>(count);
  return count;
}

bool Connection::readBody(std::string& body, std::size_t size) {
  body.clear();
  std::array<char, 4096> piece{};
  while (body.size() < size) {
    const ssize_t count = take(piece.data(), std::min(piece.size(), size - body.size()));
    if (count <= 0) return false;
    body.append(piece.data(), static_cast<std::size_t>(count));
  }
  return true;
}

ssize_t Connection::write(const char* bytes, std::size_t size) {
  return sendAll(socket_, bytes, size, Clock::now() + patience_) ? static_cast<ssize_t>(size) : -1;
}

void Connection::get_remote_ip_and_port(std::string& ip, int& port) const {
  ip.clear();  // who asks is told by a token, never by an address
  port = 0;
}

void Connection::get_local_ip_and_port(std::string& ip, int& port) const { get_remote_ip_and_port(ip, port); }

void Connection::finish() {
  endSending(socket_);
  const Clock::time_point end = std::min<Clock::time_point>(Clock::now() + lingering, deadline_);
  while (receiveSome(socket_, buffer_.data(), buffer_.size(), end) > 0) continue;
}

}  // namespace zentaro::http
