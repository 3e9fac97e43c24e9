// Stream sockets, as far as systems differ in them: posix/ and windows/ define these functions. A socket never
// blocks, and no child process gets it.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/tcp_name.h"

namespace zentaro::sockets {

using Number = std::intptr_t;
inline constexpr Number none = -1;

/// The system's own record of an address.
using Address = std::vector<std::byte>;

// Codes of the system that lines over TCP end with.
struct Codes {
  std::uint32_t badName, badHandle, inUse, timedOut, hungUp;
};
extern const Codes codes;

/// The addresses of the host in the order to try; none with the reason in `error`.
std::vector<Address> addressesOf(const TcpName& name, std::uint32_t& error);

/// A new socket that has begun to connect, with what a printer's line needs set: what is not delivered is
/// thrown away when the socket is closed, however that comes, and 5 s after it was sent; a host that vanished
/// is noticed; small frames leave at once. `none` with the reason in `error`.
Number beginConnection(const Address& address, std::uint32_t& error);
/// 0 for a connection that was made, else why it was not. To be asked once the socket can be written.
std::uint32_t connectionError(Number socket);

enum class For { Reading, Writing };
/// Sleeps until the socket can be used so, or is broken; false when the deadline is over.
bool waitUntilReady(Number socket, For use, std::chrono::steady_clock::time_point deadline);

/// The bytes that can be received at once.
std::uint32_t bytesWaiting(Number socket);

struct Moved {
  std::size_t count = 0;
  std::uint32_t error = 0;  // 0, also when nothing could be moved at the moment
  bool isEnd = false;       // the other side has ended the connection
};
enum class Receive { Take, Look };  // looking leaves the bytes there
Moved receive(Number socket, char* buffer, std::size_t count, Receive how);
Moved send(Number socket, const char* bytes, std::size_t count);

void close(Number socket);

}  // namespace zentaro::sockets
