// A serial line in a test: what the printer object writes is kept, and each write gets the next answer of the
// script. <SEQ> in an answer is the sequence character of what it answers.
#pragma once

#include <algorithm>
#include <deque>
#include <limits>
#include <string>
#include <vector>

#include "support/bytes.h"
#include "support/fakes.h"

namespace zentaro::testing {

/// What arrives, and how many seconds after the write that it answers.
struct Chunk {
  std::string readable;
  double after = 0;
};

class FakeLine : public SerialServices {
 public:
  explicit FakeLine(FakeClock& clock) : clock_(clock) {}

  std::vector<std::string> written;
  std::vector<std::string> opened;
  int closed = 0;
  bool canOpen = true;

  /// The answer to the next write that has none yet; a write without an answer is met with silence.
  void answer(std::vector<Chunk> chunks) { answers_.push_back(std::move(chunks)); }
  /// What is still to come never comes.
  void fallSilent() { coming_.clear(); }

  SerialHandle CreateFileA(const std::string& name, std::uint32_t /*access*/, std::uint32_t /*shareMode*/,
                           std::uint32_t /*creation*/, std::uint32_t /*attributes*/) override {
    opened.push_back(name);
    isOpen_ = canOpen;
    return canOpen ? handle_ : invalidSerialHandle;
  }
  bool SetupComm(SerialHandle /*h*/, std::uint32_t /*in*/, std::uint32_t /*out*/) override { return true; }
  bool PurgeComm(SerialHandle /*h*/, std::uint32_t /*flags*/) override { return true; }
  bool SetCommTimeouts(SerialHandle /*h*/, const CommTimeouts& /*timeouts*/) override { return true; }
  bool GetCommState(SerialHandle /*h*/, LineSettings& /*settings*/) override { return true; }
  bool BuildCommDCBA(const std::string& /*text*/, LineSettings& /*settings*/) override { return true; }
  bool SetCommState(SerialHandle /*h*/, const LineSettings& /*settings*/) override { return true; }
  bool CloseHandle(SerialHandle /*h*/) override {
    isOpen_ = false;
    return ++closed > 0;
  }
  bool ClearCommError(SerialHandle handle, std::uint32_t& flags, std::uint32_t& waiting) override {
    flags = 0;
    waiting = !coming_.empty() && coming_.front().after <= clock_.now
                  ? static_cast<std::uint32_t>(bytes(coming_.front().readable).size())
                  : 0;
    return isOpen_ && handle == handle_;
  }
  bool ReadFile(SerialHandle /*h*/, char* buffer, std::uint32_t count, std::uint32_t& read,
                Overlapped& /*overlapped*/) override {
    const std::string chunk = bytes(coming_.front().readable);
    coming_.pop_front();
    EXPECT_LE(chunk.size(), count);
    std::copy(chunk.begin(), chunk.end(), buffer);
    read = static_cast<std::uint32_t>(chunk.size());
    return true;
  }
  bool WriteFile(SerialHandle handle, const char* data, std::uint32_t count, std::uint32_t& done,
                 Overlapped& /*overlapped*/) override {
    if (!isOpen_ || handle != handle_) return false;
    written.emplace_back(data, count);
    done = count;
    if (answers_.empty()) return true;
    for (Chunk chunk : answers_.front()) {
      if (const auto at = chunk.readable.find("<SEQ>"); at != std::string::npos)
        chunk.readable.replace(at, 5, 1, data[1]);
      chunk.after += clock_.now;
      coming_.push_back(chunk);
    }
    answers_.pop_front();
    return true;
  }
  bool GetOverlappedResult(SerialHandle /*h*/, Overlapped& /*o*/, std::uint32_t& /*count*/,
                           bool /*wait*/) override {
    ADD_FAILURE() << "no transfer is ever pending here";
    return false;
  }
  std::uint32_t GetLastError() override { return 2; }
  std::string FormatMessageA(std::uint32_t /*code*/) override { return "No such device"; }
  void WaitForInput(SerialHandle /*h*/, std::chrono::milliseconds limit) override {
    ASSERT_GT(limit.count(), 0) << "a wait of no time spins";
    const double end = clock_.now + std::chrono::duration<double>(limit).count();
    const double next = coming_.empty() ? std::numeric_limits<double>::infinity() : coming_.front().after;
    clock_.now = std::max(clock_.now, std::min(end, next));
  }

 private:
  static constexpr SerialHandle handle_ = 7;
  FakeClock& clock_;
  bool isOpen_ = false;
  std::deque<std::vector<Chunk>> answers_;
  std::deque<Chunk> coming_;
};

/// A scripted line in the place of the system's.
class LineTest : public ::testing::Test {
 protected:
  LineTest() { platform.attach(line); }

  FakePlatform platform;
  FakeLine line{platform.clock};
};

}  // namespace zentaro::testing
