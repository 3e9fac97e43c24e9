// A socket at a path, which only programs of the same user on this machine reach.
#pragma once

#include <array>
#include <cstdint>

#include "virtual-printer/line/listener.h"

namespace virtual_printer {

class LocalSocket {
 public:
  /// Takes the place of a socket that nobody serves any more, never of another file; its owner alone may connect.
  /// Throws std::runtime_error that begins with the option's name, --control.
  explicit LocalSocket(std::string path);
  LocalSocket(const LocalSocket&) = delete;
  LocalSocket& operator=(const LocalSocket&) = delete;
  ~LocalSocket();

  /// What a client's first line must be; empty where nobody else reaches the socket.
  const std::string& password() const { return password_; }
  Listener& listener() { return listener_; }
  const Listener& listener() const { return listener_; }

 private:
  std::string path_, password_;
  Listener listener_;
  std::array<std::uint64_t, 2>
      made_{};  // what the system calls the file of the socket, the only one to be removed
};

}  // namespace virtual_printer
