// A line over TCP that this process has open.
#pragma once

#include <optional>
#include <string_view>

#include "platform/serial_services.h"
#include "platform/sockets.h"

namespace zentaro {

/// A raw connection to whatever has the printer on a cable. Closing it throws away what has not been
/// delivered, so that a command that was told as lost is not carried out after all. Each call that returns
/// bool returns false on failure with the reason in error(); once the connection is lost, all do.
class TcpLine {
 public:
  /// Connects within 3 s and throws away what comes until the line has been silent for 100 ms: a late answer
  /// of the connection before. Nothing, with the reason in `error`: in use where the other side hangs up at
  /// once, since it has a host already.
  static std::optional<TcpLine> open(const TcpName& name, std::uint32_t& error);

  TcpLine(TcpLine&& other) noexcept;
  TcpLine& operator=(TcpLine&&) = delete;
  ~TcpLine();

  bool purge();
  bool waiting(std::uint32_t& bytes);
  /// What has come, at most `count` bytes; waits as the time-outs say only while nothing has.
  bool read(char* buffer, std::uint32_t count, std::uint32_t& got);
  /// All of `bytes`, or what could be sent in the time that the time-outs give.
  bool write(std::string_view bytes, std::uint32_t& written);
  /// Sleeps until a byte can be read or `limit` is over; all of `limit` on a connection that is lost.
  void waitForInput(std::chrono::milliseconds limit);

  std::uint32_t error() const { return lost_; }

  CommTimeouts timeouts{0xFFFFFFFF, 0, 1000, 1000, 0};

 private:
  explicit TcpLine(sockets::Number socket) : socket_(socket) {}
  bool drain();
  bool lose(std::uint32_t error);
  bool isAlive();

  sockets::Number socket_;
  std::uint32_t lost_ = 0;  // why the connection is lost
};

}  // namespace zentaro
