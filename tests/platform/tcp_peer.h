// The other side of a line over TCP: the test listens, the code under test connects.
#pragma once

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

namespace zentaro::testing {

class TcpPeer {
 public:
  explicit TcpPeer(int receiveBuffer = 0) : listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    if (receiveBuffer > 0)  // what is accepted has it too
      ::setsockopt(listener_, SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
    sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    socklen_t size = sizeof address;
    auto* const record = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(::bind(listener_, record, size), 0);
    EXPECT_EQ(::listen(listener_, 0), 0);
    EXPECT_EQ(::getsockname(listener_, record, &size), 0);
    port_ = ntohs(address.sin_port);
  }
  TcpPeer(const TcpPeer&) = delete;
  TcpPeer& operator=(const TcpPeer&) = delete;
  ~TcpPeer() {
    hangUp();
    ::close(listener_);
  }

  std::string device() const { return "tcp://127.0.0.1:" + std::to_string(port_); }
  void accept() {
    pollfd waiting{listener_, POLLIN, 0};
    ASSERT_EQ(::poll(&waiting, 1, 10'000), 1);
    hangUp();
    host_ = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
  }
  void send(const std::string& bytes) const {
    EXPECT_EQ(::send(host_, bytes.data(), bytes.size(), MSG_NOSIGNAL), static_cast<ssize_t>(bytes.size()));
  }
  /// At least `count` bytes, or what came until the host was gone or silent for 10 s.
  std::string receive(std::size_t count) const {
    std::string all, part(65536, '\0');
    while (all.size() < count) {
      pollfd waiting{host_, POLLIN, 0};
      if (::poll(&waiting, 1, 10'000) != 1) break;
      const ssize_t got = ::recv(host_, part.data(), part.size(), 0);
      if (got <= 0) break;
      all.append(part, 0, static_cast<std::size_t>(got));
    }
    return all;
  }
  void hangUp() {
    if (host_ >= 0) ::close(host_);
    host_ = -1;
  }

 private:
  int listener_, host_ = -1, port_ = 0;
};

}  // namespace zentaro::testing
