// Fakes of the small platform services, and a set of services made of them: nothing in it touches the system.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/services.h"

namespace zentaro::testing {

class FakeSettings : public SettingsStore {
 public:
  std::map<std::pair<std::string, std::string>, std::u16string> values;  // by section and key
  std::vector<std::string> reads;                                        // the keys asked for, in order

  std::u16string read(std::string_view application, std::string_view section, std::string_view key,
                      std::u16string_view fallback) override {
    EXPECT_EQ(application, "TRV");
    reads.emplace_back(key);
    const auto found = values.find({std::string(section), std::string(key)});
    return found == values.end() ? std::u16string(fallback) : found->second;
  }
};

/// Moves only when it is told to, or when somebody sleeps.
class FakeClock : public Clock {
 public:
  double now = 36000;
  std::vector<std::chrono::milliseconds> sleeps;

  double secondsSinceMidnight() override { return now; }
  LocalTime localTime() override { return {2024, 3, 15, 14, 5, 9}; }
  void sleep(std::chrono::milliseconds time) override {
    sleeps.push_back(time);
    now += std::chrono::duration<double>(time).count();
  }
};

class FakeHost : public Host {
 public:
  int yields = 0;
  std::function<void()> onYield;
  std::vector<std::pair<std::u16string, std::u16string>> boxes;

  void yield() override {
    ++yields;
    if (onYield) onYield();
  }
  bool wantsYields() const override { return static_cast<bool>(onYield); }
  void errorBox(std::u16string_view title, std::u16string_view text) override {
    boxes.emplace_back(title, text);
  }
};

class FakeRegional : public RegionalSettings {
 public:
  Regional settings;
  Regional current() override { return settings; }
};

/// Files in memory; `openError` or `writeError` makes the next openings or writes fail.
class FakeFiles : public Files {
 public:
  std::map<std::string, std::string> contents;
  std::vector<std::string> writes;
  int openFiles = 0;
  std::error_code openError, writeError;

  std::unique_ptr<AppendFile> openForAppend(const std::string& path, std::error_code& error) override {
    error = openError;
    return error ? nullptr : std::make_unique<File>(*this, path);
  }

 private:
  struct File : AppendFile {
    File(FakeFiles& files, std::string path) : files_(files), path_(std::move(path)) {
      ++files_.openFiles;
      files_.contents[path_];
    }
    ~File() override { --files_.openFiles; }
    std::error_code write(std::string_view bytes) override {
      if (files_.writeError) return files_.writeError;
      files_.contents[path_] += bytes;
      files_.writes.emplace_back(bytes);
      return {};
    }
    FakeFiles& files_;
    std::string path_;
  };
};

/// All small services as fakes, in force on this thread; a test adds the serial services that it needs.
struct FakePlatform {
  FakeSettings settings;
  FakeClock clock;
  FakeHost host;
  FakeFiles files;
  FakeRegional regional;

  explicit FakePlatform(SerialServices* serial = nullptr)
      : scope({serial, &settings, &clock, &host, &files, &regional, &windows1252()}) {}

  void attach(SerialServices& serial) {
    Services all = services();
    all.serial = &serial;
    scopeWithSerial.emplace(all);
  }

  ServicesScope scope;
  std::optional<ServicesScope> scopeWithSerial;
};

}  // namespace zentaro::testing
