// A system that follows a script: each call of the driver must be the next one of the script, with its
// parameters, and gets the answer written beside it. What the driver does not call, or calls beyond the
// script, fails the test.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <map>
#include <string>

#include "platform/serial_services.h"

namespace zentaro::testing {

struct Answer {
  std::uint32_t error = 0;  // other than 0 makes the call fail
  std::uint32_t count = 0;  // bytes waiting, written, or counted by a completion wait
  std::uint32_t flags = 0;
  std::string data = {};    // put into the buffer of a read
  bool fails = error != 0;  // alone: a failure that leaves the code 0
};

class ScriptedSerial : public SerialServices {
 public:
  std::map<std::uint32_t, std::string> texts{{5, "  Access denied.  "},
                                             {31, std::string("Broken\0junk", 11)}};
  std::vector<std::string> waits;
  bool isFree = false;  // no script any more: everything succeeds

  ~ScriptedSerial() override {
    for (const auto& step : script_) ADD_FAILURE() << "not called: " << step.first;
  }
  ScriptedSerial& expect(std::string call, Answer answer = {}) {
    script_.emplace_back(std::move(call), std::move(answer));
    return *this;
  }

  using Word = std::uint32_t;
  SerialHandle CreateFileA(const std::string& name, Word access, Word share, Word creation,
                           Word attributes) override {
    return next("CreateFileA " + name, access, share, creation, attributes) ? 7 : invalidSerialHandle;
  }
  bool SetupComm(SerialHandle handle, Word input, Word output) override {
    return next("SetupComm", handle, input, output);
  }
  bool PurgeComm(SerialHandle handle, Word flags) override { return next("PurgeComm", handle, flags); }
  bool SetCommTimeouts(SerialHandle handle, const CommTimeouts& t) override {
    return next("SetCommTimeouts", handle, t.readInterval, t.readMultiplier, t.readConstant,
                t.writeMultiplier, t.writeConstant);
  }
  bool GetCommState(SerialHandle handle, LineSettings& line) override {
    line.native[0] = std::byte{0x5A};
    return next("GetCommState", handle);
  }
  bool BuildCommDCBA(const std::string& text, LineSettings& line) override {
    line.baudRate = 9600;
    return next("BuildCommDCBA " + text);
  }
  bool SetCommState(SerialHandle handle, const LineSettings& line) override {
    return next("SetCommState", handle, line.baudRate, static_cast<int>(line.native[0]));
  }
  bool CloseHandle(SerialHandle handle) override { return next("CloseHandle", handle); }
  bool ClearCommError(SerialHandle handle, Word& flags, Word& waiting) override {
    const bool done = next("ClearCommError", handle);
    flags = answer_.flags;
    waiting = answer_.count;
    return done;
  }
  bool ReadFile(SerialHandle handle, char* buffer, Word count, Word& read, Overlapped&) override {
    const bool done = next("ReadFile", handle, count);
    std::ranges::copy(answer_.data, buffer);
    read = done ? static_cast<Word>(answer_.data.size()) : 0;
    return done;
  }
  bool WriteFile(SerialHandle handle, const char* bytes, Word count, Word& written, Overlapped&) override {
    const bool done = next("WriteFile " + std::string(bytes, count), handle);
    written = answer_.count;
    return done;
  }
  bool GetOverlappedResult(SerialHandle handle, Overlapped&, Word& count, bool wait) override {
    const bool done = next("GetOverlappedResult", handle, wait);
    count = answer_.count;
    return done;
  }
  Word GetLastError() override { return error_; }
  std::string FormatMessageA(Word code) override { return texts[code]; }
  void WaitForInput(SerialHandle handle, std::chrono::milliseconds limit) override {
    waits.push_back(std::to_string(handle) + " " + std::to_string(limit.count()));
  }

 private:
  template <class... Numbers>
  bool next(std::string call, Numbers... numbers) {
    answer_ = {};
    if (isFree) return true;
    ((call += " " + std::to_string(numbers)), ...);
    if (script_.empty()) script_.emplace_back("(at its end)", Answer{});
    EXPECT_EQ(call, script_.front().first);
    answer_ = script_.front().second;
    script_.pop_front();
    if (answer_.fails) error_ = answer_.error;
    return !answer_.fails;
  }

  std::deque<std::pair<std::string, Answer>> script_;
  Answer answer_;
  Word error_ = 0;
};

}  // namespace zentaro::testing
