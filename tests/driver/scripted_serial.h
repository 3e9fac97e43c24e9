// A system that follows a script: each call of the driver must be the next one of the script, with its
// parameters, and gets the answer written beside it. What the driver does not call, or calls beyond the
// script, fails the test.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
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

  SerialHandle CreateFileA(const std::string& name, std::uint32_t access, std::uint32_t share,
                           std::uint32_t creation, std::uint32_t attributes) override {
    const Answer answer = next("CreateFileA " + name + list({access, share, creation, attributes}));
    return answer.fails ? invalidSerialHandle : 7;
  }
  bool SetupComm(SerialHandle handle, std::uint32_t input, std::uint32_t output) override {
    return !next("SetupComm" + list({handle, input, output})).fails;
  }
  bool PurgeComm(SerialHandle handle, std::uint32_t flags) override {
    return !next("PurgeComm" + list({handle, flags})).fails;
  }
  bool SetCommTimeouts(SerialHandle handle, const CommTimeouts& t) override {
    return !next("SetCommTimeouts" + list({handle, t.readInterval, t.readMultiplier, t.readConstant,
                                           t.writeMultiplier, t.writeConstant}))
                .fails;
  }
  bool GetCommState(SerialHandle handle, LineSettings& line) override {
    line.native[0] = std::byte{0x5A};
    return !next("GetCommState" + list({handle})).fails;
  }
  bool BuildCommDCBA(const std::string& text, LineSettings& line) override {
    line.baudRate = 9600;
    return !next("BuildCommDCBA " + text).fails;
  }
  bool SetCommState(SerialHandle handle, const LineSettings& line) override {
    return !next("SetCommState" + list({handle, line.baudRate, static_cast<int>(line.native[0])})).fails;
  }
  bool CloseHandle(SerialHandle handle) override { return !next("CloseHandle" + list({handle})).fails; }
  bool ClearCommError(SerialHandle handle, std::uint32_t& flags, std::uint32_t& waiting) override {
    const Answer answer = next("ClearCommError" + list({handle}));
    flags = answer.flags;
    waiting = answer.count;
    return !answer.fails;
  }
  bool ReadFile(SerialHandle handle, char* buffer, std::uint32_t count, std::uint32_t& read,
                Overlapped&) override {
    const Answer answer = next("ReadFile" + list({handle, count}));
    std::ranges::copy(answer.data, buffer);
    read = answer.fails ? 0 : static_cast<std::uint32_t>(answer.data.size());
    return !answer.fails;
  }
  bool WriteFile(SerialHandle handle, const char* bytes, std::uint32_t count, std::uint32_t& written,
                 Overlapped&) override {
    const Answer answer = next("WriteFile" + list({handle}) + " " + std::string(bytes, count));
    written = answer.count;
    return !answer.fails;
  }
  bool GetOverlappedResult(SerialHandle handle, Overlapped&, std::uint32_t& count, bool wait) override {
    const Answer answer = next("GetOverlappedResult" + list({handle, wait}));
    count = answer.count;
    return !answer.fails;
  }
  std::uint32_t GetLastError() override { return error_; }
  std::string FormatMessageA(std::uint32_t code) override { return texts[code]; }
  void WaitForInput(SerialHandle handle, std::chrono::milliseconds limit) override {
    waits.push_back(list({handle, limit.count()}));
  }

 private:
  static std::string list(std::initializer_list<std::int64_t> numbers) {
    std::string text;
    for (const std::int64_t number : numbers) text += " " + std::to_string(number);
    return text;
  }

  Answer next(const std::string& call) {
    if (isFree) return {};
    const bool isScripted = !script_.empty() && script_.front().first == call;
    EXPECT_TRUE(isScripted) << "called: " << call
                            << "\nscript: " << (script_.empty() ? "(at its end)" : script_.front().first);
    const Answer answer = script_.empty() ? Answer{} : script_.front().second;
    if (!script_.empty()) script_.pop_front();
    if (answer.fails) error_ = answer.error;
    return answer;
  }

  std::deque<std::pair<std::string, Answer>> script_;
  std::uint32_t error_ = 0;
};

}  // namespace zentaro::testing
