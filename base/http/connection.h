// One connection with one request: how much may come before the blank line, and by when all of it must have come.
#pragma once

#include <httplib.h>

#include <array>

#include "base/http/limits.h"
#include "base/http/socket.h"

namespace zentaro::http {

class Connection final : public httplib::Stream {
 public:
  Connection(SocketHandle socket, const Limits& limits);

  bool is_readable() const override { return true; }  // read() waits by itself
  bool is_writable() const override { return isConnected(socket_); }
  /// -1 once the limit of the head or the deadline of the request is passed.
  ssize_t read(char* bytes, std::size_t size) override;
  /// Each has a deadline of its own, since a stream of events has no end.
  ssize_t write(const char* bytes, std::size_t size) override;
  void get_remote_ip_and_port(std::string& ip, int& port) const override;
  void get_local_ip_and_port(std::string& ip, int& port) const override;
  socket_t socket() const override { return static_cast<socket_t>(socket_); }

  /// The head is over: what follows is counted no more. False when fewer bytes came than asked for.
  bool readBody(std::string& body, std::size_t size);
  /// What was sent reaches a client that is still sending: a close with unread bytes would throw it away.
  void finish();

 private:
  ssize_t take(char* bytes, std::size_t size);

  SocketHandle socket_;
  std::chrono::milliseconds patience_;
  Clock::time_point deadline_;
  std::size_t headLeft_;
  std::array<char, 4096> buffer_{};  // httplib reads lines byte by byte
  std::size_t begin_ = 0, end_ = 0;
};

}  // namespace zentaro::http
