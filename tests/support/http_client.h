// A client that sends exactly the bytes that a test wants, whole or in pieces.
#pragma once

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zentaro::testing {

class HttpClient {
 public:
  explicit HttpClient(int port) : socket_{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)} {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
      throw std::runtime_error("nobody listens");
  }
  HttpClient(const HttpClient&) = delete;
  HttpClient& operator=(const HttpClient&) = delete;
  ~HttpClient() { ::close(socket_); }

  /// False once the other side has hung up.
  bool send(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (count <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
  }

  /// What came until it contains `wanted`, until the other side hung up, or for so long.
  std::string receive(std::chrono::milliseconds patience = std::chrono::seconds{10},
                      std::string_view wanted = {}) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (wanted.empty() || got_.find(wanted) == std::string::npos) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
      pollfd watched{socket_, POLLIN, 0};
      if (left.count() <= 0 || ::poll(&watched, 1, static_cast<int>(left.count())) <= 0) break;
      std::array<char, 4096> bytes{};
      const ssize_t count = ::recv(socket_, bytes.data(), bytes.size(), 0);
      if (count <= 0) {
        isClosed_ = true;
        break;
      }
      got_.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return got_;
  }

  bool isClosed() const { return isClosed_; }
  std::string receivedUntilClosed() {
    receive();
    if (!isClosed_) throw std::runtime_error("the server keeps the connection: " + got_);
    return got_;
  }

 private:
  int socket_;
  bool isClosed_ = false;
  std::string got_;
};

/// A whole request, with the headers that every client sends.
inline std::string httpRequest(const std::string& line, const std::string& headers = {},
                               const std::string& body = {}) {
  std::string text = line + " HTTP/1.1\r\nHost: 127.0.0.1\r\n" + headers;
  if (!body.empty()) text += "Content-Length: " + std::to_string(body.size()) + "\r\n";
  return text + "\r\n" + body;
}

inline int httpStatus(const std::string& answer) {
  return answer.starts_with("HTTP/1.1 ") ? std::stoi(answer.substr(9, 3)) : 0;
}

}  // namespace zentaro::testing
