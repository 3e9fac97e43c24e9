// Connecting, and moving bytes with a time limit.
#include "platform/tcp_line.h"

#include <array>
#include <thread>
#include <utility>

namespace zentaro {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using Deadline = steady_clock::time_point;

constexpr milliseconds connectLimit{3000}, silence{100}, longestPurge{2000};

/// The first of the host's addresses that takes the connection.
sockets::Number connectTo(const TcpName& name, std::uint32_t& error) {
  const Deadline deadline = steady_clock::now() + connectLimit;
  for (const sockets::Address& address : sockets::addressesOf(name, error)) {
    const sockets::Number socket = sockets::beginConnection(address, error);
    if (socket == sockets::none) continue;
    const bool isReady = sockets::waitUntilReady(socket, sockets::For::Writing, deadline);
    error = isReady ? sockets::connectionError(socket) : sockets::codes.timedOut;
    if (error == 0) return socket;
    sockets::close(socket);
  }
  return sockets::none;
}

milliseconds limitOf(std::uint32_t multiplier, std::size_t count, std::uint32_t constant) {
  return milliseconds(std::uint64_t{multiplier} * count + constant);
}

}  // namespace

std::optional<TcpLine> TcpLine::open(const TcpName& name, std::uint32_t& error) {
  const sockets::Number socket = connectTo(name, error);
  if (socket == sockets::none) return std::nullopt;
  TcpLine line(socket);
  if (line.drain()) return line;
  error = sockets::codes.inUse;
  return std::nullopt;
}

TcpLine::TcpLine(TcpLine&& other) noexcept
    : timeouts(other.timeouts), socket_(std::exchange(other.socket_, sockets::none)), lost_(other.lost_) {}

TcpLine::~TcpLine() {
  if (socket_ != sockets::none) sockets::close(socket_);
}

bool TcpLine::lose(std::uint32_t error) {
  if (lost_ == 0) lost_ = error;
  return false;
}

/// Silence is timed from the last byte; a line that never falls silent is left to whoever asks it.
bool TcpLine::drain() {
  const Deadline longest = steady_clock::now() + longestPurge;
  while (steady_clock::now() < longest &&
         sockets::waitUntilReady(socket_, sockets::For::Reading, steady_clock::now() + silence)) {
    if (!purge()) return false;
  }
  return true;
}

bool TcpLine::purge() {
  std::array<char, 4096> discarded;
  for (int turn = 0; turn < 1000; ++turn) {  // a line that sends without end must not hold the program
    const auto got = sockets::receive(socket_, discarded.data(), discarded.size(), sockets::Receive::Take);
    if (got.isEnd || got.error != 0) return lose(got.isEnd ? sockets::codes.hungUp : got.error);
    if (got.count == 0) break;
  }
  return lost_ == 0;
}

bool TcpLine::isAlive() {
  char byte = 0;
  const auto got = sockets::receive(socket_, &byte, 1, sockets::Receive::Look);
  if (got.isEnd || got.error != 0) return lose(got.isEnd ? sockets::codes.hungUp : got.error);
  return lost_ == 0;
}

bool TcpLine::waiting(std::uint32_t& bytes) {
  bytes = sockets::bytesWaiting(socket_);
  return bytes > 0 || isAlive();
}

bool TcpLine::read(char* buffer, std::uint32_t count, std::uint32_t& got) {
  const Deadline deadline =
      steady_clock::now() + limitOf(timeouts.readMultiplier, count, timeouts.readConstant);
  for (;;) {
    const auto taken = sockets::receive(socket_, buffer, count, sockets::Receive::Take);
    got = static_cast<std::uint32_t>(taken.count);
    if (taken.isEnd || taken.error != 0) return lose(taken.isEnd ? sockets::codes.hungUp : taken.error);
    if (got > 0 || count == 0) return true;
    if (!sockets::waitUntilReady(socket_, sockets::For::Reading, deadline)) return true;
  }
}

bool TcpLine::write(std::string_view bytes, std::uint32_t& written) {
  const Deadline deadline =
      steady_clock::now() + limitOf(timeouts.writeMultiplier, bytes.size(), timeouts.writeConstant);
  written = 0;
  // The system would take the bytes for a connection that the other side has ended.
  if (!isAlive()) return false;
  while (!bytes.empty()) {
    const auto sent = sockets::send(socket_, bytes.data(), bytes.size());
    if (sent.error != 0) return lose(sent.error);
    written += static_cast<std::uint32_t>(sent.count);
    bytes.remove_prefix(sent.count);
    if (sent.count == 0 && !sockets::waitUntilReady(socket_, sockets::For::Writing, deadline)) return true;
  }
  return true;
}

void TcpLine::waitForInput(milliseconds limit) {
  const Deadline deadline = steady_clock::now() + limit;
  std::uint32_t bytes = 0;
  if (lost_ == 0 && !sockets::waitUntilReady(socket_, sockets::For::Reading, deadline)) return;
  // The end of a connection can be read for ever; a caller that polls must not spin.
  if (!waiting(bytes)) std::this_thread::sleep_until(deadline);
}

}  // namespace zentaro
