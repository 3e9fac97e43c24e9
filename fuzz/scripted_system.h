// A system without files, time or lines: what is written to its line gets the next answer of a script.
#pragma once

#include <algorithm>
#include <deque>
#include <string>

#include "platform/services.h"

namespace fuzz {

class ScriptedSystem : zentaro::SerialServices,
                       zentaro::SettingsStore,
                       zentaro::Clock,
                       zentaro::Host,
                       zentaro::Files,
                       zentaro::RegionalSettings {
 public:
  std::deque<std::string> answers;  // the fields of each, "0000|0000|field"; one that is empty is silence

 private:
  using Handle = zentaro::SerialHandle;
  struct Nowhere : zentaro::AppendFile {
    std::error_code write(std::string_view) override { return {}; }
  };

  Handle CreateFileA(const std::string& name, std::uint32_t, std::uint32_t, std::uint32_t,
                     std::uint32_t) override {
    return name == "COM9" ? zentaro::invalidSerialHandle : 1;
  }
  bool SetupComm(Handle, std::uint32_t, std::uint32_t) override { return true; }
  bool PurgeComm(Handle, std::uint32_t) override { return true; }
  bool SetCommTimeouts(Handle, const zentaro::CommTimeouts&) override { return true; }
  bool GetCommState(Handle, zentaro::LineSettings&) override { return true; }
  bool BuildCommDCBA(const std::string&, zentaro::LineSettings&) override { return true; }
  bool SetCommState(Handle, const zentaro::LineSettings&) override { return true; }
  bool CloseHandle(Handle) override { return true; }
  bool ClearCommError(Handle, std::uint32_t& flags, std::uint32_t& waiting) override {
    flags = 0;
    waiting = static_cast<std::uint32_t>(coming_.size());
    return true;
  }
  bool ReadFile(Handle, char* buffer, std::uint32_t count, std::uint32_t& read,
                zentaro::Overlapped&) override {
    read = static_cast<std::uint32_t>(coming_.copy(buffer, count));
    coming_.erase(0, read);
    return true;
  }
  bool WriteFile(Handle, const char* bytes, std::uint32_t count, std::uint32_t& written,
                 zentaro::Overlapped&) override {
    written = count;
    if (answers.empty() || count < 3) return true;
    if (!answers.front().empty()) coming_ += answerTo(bytes);
    answers.pop_front();
    return true;
  }
  bool GetOverlappedResult(Handle, zentaro::Overlapped&, std::uint32_t&, bool) override { return false; }
  std::uint32_t GetLastError() override { return 2; }
  std::string FormatMessageA(std::uint32_t) override { return "No such device"; }
  void WaitForInput(Handle, std::chrono::milliseconds limit) override { sleep(limit); }

  std::string answerTo(const char* command) {
    std::string frame{'\x02', command[1], command[2], '\x1C'};
    frame += answers.front();
    std::replace(frame.begin() + 3, frame.end(), '|', '\x1C');
    frame += '\x03';
    unsigned sum = 0;
    for (const char c : frame) sum += static_cast<unsigned char>(c);
    for (int shift = 12; shift >= 0; shift -= 4) frame += "0123456789ABCDEF"[(sum >> shift) & 15];
    return frame;
  }

  std::u16string read(std::string_view, std::string_view, std::string_view,
                      std::u16string_view fallback) override {
    return std::u16string(fallback);
  }
  double secondsSinceMidnight() override { return now_; }
  zentaro::LocalTime localTime() override { return {2024, 3, 15, 14, 5, 9}; }
  void sleep(std::chrono::milliseconds time) override { now_ += std::chrono::duration<double>(time).count(); }
  void yield() override {}
  bool wantsYields() const override { return false; }
  void errorBox(std::u16string_view, std::u16string_view) override {}
  std::unique_ptr<zentaro::AppendFile> openForAppend(const std::string&, std::error_code&) override {
    return std::make_unique<Nowhere>();
  }
  zentaro::Regional current() override { return {}; }

  std::string coming_;
  double now_ = 36000;
  zentaro::ServicesScope scope_{{this, this, this, this, this, this, &zentaro::windows1252()}};
};

}  // namespace fuzz
