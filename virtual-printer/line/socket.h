// Sockets, and what the loop waits for. How each is done is the system's affair: posix/ and windows/.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/system/address.h"

namespace virtual_printer {

using zentaro::system::Address;

/// A socket, or on POSIX any descriptor.
using Handle = std::intptr_t;
inline constexpr Handle noHandle = -1;

/// Closed with its owner.
class Socket {
 public:
  explicit Socket(Handle handle = noHandle) : handle_{handle} {}
  Socket(Socket&& other) noexcept : handle_{std::exchange(other.handle_, noHandle)} {}
  Socket& operator=(Socket&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Socket() { close(); }

  Handle handle() const { return handle_; }
  bool isOpen() const { return handle_ != noHandle; }
  void close();

 private:
  Handle handle_;
};

struct Watched {
  Handle handle = noHandle;  // one that is none is passed over
  bool hasSomething = false;
};
using WatchList = std::vector<Watched>;

/// Waits until there is something to read or to accept, or somebody has gone, and marks where. False when nothing
/// happened in that time.
bool waitFor(WatchList& watched, std::chrono::milliseconds patience);
bool sawSomething(const WatchList& watched, Handle handle);

/// Listens at the address; a port 0 becomes the free one that was found. Throws std::runtime_error with the
/// system's reason.
Socket listenAt(Address& address);
/// The next client; closed when there is none.
Socket acceptOn(const Socket& listening);
/// Whether so few descriptors are left that the printer may soon lack one for its own files.
bool isNearLimit(const Socket& socket);

/// What has come: empty when there is nothing just now, nothing when the other side has gone.
std::optional<std::string> receive(const Socket& socket);
/// Bytes that there is no room for are lost.
void send(const Socket& socket, std::string_view bytes);

/// Small pieces go out at once, and a host that vanished without a word does not keep the line for ever.
void prepareLine(const Socket& host);
/// "127.0.0.1:40112"
std::string peerOf(const Socket& socket);

}  // namespace virtual_printer
