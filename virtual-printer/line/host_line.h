// The line between the printer and its host, whatever carries it.
#pragma once

#include <string>
#include <string_view>

#include "virtual-printer/line/socket.h"

namespace virtual_printer {

class HostLine {
 public:
  HostLine() = default;
  HostLine(const HostLine&) = delete;
  HostLine& operator=(const HostLine&) = delete;
  virtual ~HostLine() = default;

  /// Before it there is no line. Throws std::runtime_error.
  virtual void connect() = 0;
  /// The host sees its line vanish, until the next connect().
  virtual void hangUp() = 0;
  /// How a host opens it.
  virtual std::string name() const = 0;

  virtual void watch(WatchList& watched) const = 0;
  /// What the host has sent; empty when there is nothing.
  virtual std::string read(const WatchList& watched) = 0;
  /// Bytes that the host's side has no room for are lost, as on a line without flow control.
  virtual void write(std::string_view bytes) = 0;
  /// Nothing has happened for a while.
  virtual void rest() {}
};

}  // namespace virtual_printer
