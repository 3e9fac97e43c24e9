// Reading, waiting and the state of an open port.
#include "platform/windows/open_port.h"

#include <algorithm>
#include <thread>

namespace zentaro::windows {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

OpenPort::~OpenPort() {
  if (handle_ != INVALID_HANDLE_VALUE) ::CloseHandle(handle_);
}

bool OpenPort::purge(std::uint32_t flags) {
  if ((flags & PURGE_RXCLEAR) != 0) kept_.reset();
  return ::PurgeComm(handle_, flags) != 0;
}

bool OpenPort::setTimeouts(const CommTimeouts& timeouts) {
  COMMTIMEOUTS native{timeouts.readInterval, timeouts.readMultiplier, timeouts.readConstant,
                      timeouts.writeMultiplier, timeouts.writeConstant};
  if (::SetCommTimeouts(handle_, &native) == 0) return false;
  timeouts_ = timeouts;
  readWait_ = 0;
  return true;
}

/// Setting time-outs costs more than a wait does, so it is done only when they change.
bool OpenPort::setReadWait(DWORD wait) {
  if (readWait_ == wait) return true;
  COMMTIMEOUTS native{MAXDWORD, MAXDWORD, wait, timeouts_.writeMultiplier, timeouts_.writeConstant};
  if (::SetCommTimeouts(handle_, &native) == 0) return false;
  readWait_ = wait;
  return true;
}

bool OpenPort::queued(std::uint32_t& bytes) {
  DWORD errors = 0;
  COMSTAT state{};
  if (::ClearCommError(handle_, &errors, &state) == 0) return false;
  lineErrors_ |= errors;
  bytes = state.cbInQue;
  return true;
}

bool OpenPort::status(std::uint32_t& flags, std::uint32_t& waiting) {
  if (!queued(waiting)) return false;
  waiting += kept_ ? 1U : 0U;
  flags = std::exchange(lineErrors_, 0);
  return true;
}

bool OpenPort::read(char* buffer, std::uint32_t count, std::uint32_t& got) {
  got = 0;
  std::uint32_t waiting = 0;
  if (count == 0) return true;
  if (!queued(waiting)) return false;
  if (!kept_ && waiting == 0) {
    waitForByte(milliseconds(std::uint64_t{timeouts_.readMultiplier} * count + timeouts_.readConstant));
    if (!queued(waiting)) return false;
  }
  if (kept_) buffer[got++] = *std::exchange(kept_, std::nullopt);
  // Never more than is there: a read that asks for more may wait for it, whatever the time-outs.
  DWORD more = 0;
  const DWORD wanted = std::min(count - got, waiting);
  const bool done = wanted == 0 || ::ReadFile(handle_, buffer + got, wanted, &more, nullptr) != 0;
  got += more;
  return done || got > 0;
}

void OpenPort::waitForByte(milliseconds limit) {
  const auto deadline = steady_clock::now() + limit;
  if (kept_ || limit.count() <= 0) return;
  char byte = 0;
  DWORD got = 0;
  const bool done =
      setReadWait(static_cast<DWORD>(limit.count())) && ::ReadFile(handle_, &byte, 1, &got, nullptr) != 0;
  if (done && got == 1) {
    kept_ = byte;
    return;
  }
  std::this_thread::sleep_until(deadline);  // hung up: a read comes back at once
}

}  // namespace zentaro::windows
