// A serial port that this process has open.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <utility>

#include "platform/serial_services.h"
#include "platform/windows/system.h"

namespace zentaro::windows {

/// Waiting is a read of one byte, since nothing else that waits on a port that was opened for synchronous
/// transfers ends with the first byte and costs so little. The byte is kept for whoever reads next. Each call
/// that returns bool returns false on failure, and the system's GetLastError gives the reason.
class OpenPort {
 public:
  explicit OpenPort(HANDLE handle) : handle_(handle) {}
  OpenPort(OpenPort&& other) noexcept
      : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}  // only one that nobody has used yet
  OpenPort& operator=(OpenPort&&) = delete;
  ~OpenPort();

  HANDLE handle() const { return handle_; }
  bool purge(std::uint32_t flags);
  /// In force until a wait needs others; reads then wait as these say all the same.
  bool setTimeouts(const CommTimeouts& timeouts);
  /// The line-error flags since the last call, and the bytes that can be read.
  bool status(std::uint32_t& flags, std::uint32_t& waiting);
  /// What has arrived, at most `count` bytes; waits as the time-outs say only while nothing has.
  bool read(char* buffer, std::uint32_t count, std::uint32_t& got);
  /// Sleeps until a byte can be read or `limit` is over; all of `limit` on a port that will never have one.
  void waitForByte(std::chrono::milliseconds limit);

 private:
  bool queued(std::uint32_t& bytes);
  bool setReadWait(DWORD milliseconds);

  HANDLE handle_;
  CommTimeouts timeouts_{0xFFFFFFFF, 0, 1000, 1000, 0};
  DWORD readWait_ = 0;            // in force at the system; 0 for the time-outs that were asked for
  std::optional<char> kept_;      // read by a wait
  std::uint32_t lineErrors_ = 0;  // cleared at the system, not told yet
};

}  // namespace zentaro::windows
