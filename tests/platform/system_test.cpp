// Settings file, device names, files opened for appending, and the host's callbacks.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/services.h"
#include "platform/system_paths.h"

namespace zentaro::testing {
namespace {

namespace fs = std::filesystem;

class SystemTest : public ::testing::Test {
 protected:
  fs::path folder = ::testing::TempDir() + "zentaro-system-" + std::to_string(::getpid());
  SettingsStore& store = *systemServices().settings;

  void SetUp() override {
    fs::create_directories(folder);
    useSettings("settings.ini");
  }
  void TearDown() override {
    fs::remove_all(folder);
    ::unsetenv("ZENTARO_SETTINGS");
  }
  void useSettings(const std::string& name) const {
    ::setenv("ZENTARO_SETTINGS", (folder / name).c_str(), 1);
  }
  void writeSettings(const std::string& text) const { std::ofstream(folder / "settings.ini") << text; }
  std::u16string debug() const { return store.read("TRV", "Config\\ModComm", "DEBUG", u"default"); }
};

TEST_F(SystemTest, SettingsAreReadAfreshAndNeverFail) {
  EXPECT_EQ(debug(), u"default") << "no file";
  writeSettings("[config\\MODCOMM]\ndebug=\xC3\xA9\nDumpFile=/tmp/t\n");
  EXPECT_EQ(debug(), u"\u00E9");
  EXPECT_EQ(store.read("Other", "Config\\ModComm", "DEBUG", u"default"), u"default");
  writeSettings("[Config\\ModComm]\nDEBUG=1\n");
  EXPECT_EQ(debug(), u"1");

  useSettings(".");
  EXPECT_EQ(debug(), u"default") << "a folder";
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  useSettings("pipe");
  EXPECT_EQ(debug(), u"default") << "a pipe that nobody writes";
}

TEST_F(SystemTest, SettingsPathFollowsTheEnvironment) {
  EXPECT_EQ(settingsPath(), folder / "settings.ini");
  ::unsetenv("ZENTARO_SETTINGS");
  ::setenv("XDG_CONFIG_HOME", "/config", 1);
  EXPECT_EQ(settingsPath(), "/config/TRV/settings.ini");
  ::setenv("XDG_CONFIG_HOME", "", 1);
  ::setenv("HOME", "/home/caja", 1);
  EXPECT_EQ(settingsPath(), "/home/caja/.config/TRV/settings.ini");
  ::unsetenv("HOME");
  EXPECT_TRUE(settingsPath().ends_with("/.config/TRV/settings.ini")) << "the home of the user database";
}

TEST_F(SystemTest, DeviceOfAPortComesFromTheSettingsOrItsNumber) {
  writeSettings("[Config\\ModComm]\nCOM3=/dev/serial/caj\xC3\xA9\nCOM4=\n");
  EXPECT_EQ(devicePath("COM3"), "/dev/serial/caj\xC3\xA9");
  EXPECT_EQ(devicePath("COM1"), "/dev/ttyS0");
  EXPECT_EQ(devicePath("COM4"), "/dev/ttyS3");
  EXPECT_EQ(devicePath("COM12"), "/dev/ttyS11");
  EXPECT_EQ(devicePath("/dev/ttyUSB0"), "/dev/ttyUSB0");
  for (const char* name : {"COM0", "COM01", "COM-1", "COM1x", "COM", "COM99999999999", "printer"}) {
    EXPECT_EQ(devicePath(name), "") << name;
  }
}

TEST_F(SystemTest, FilesAreAppendedToByAllWriters) {
  const std::string path = folder / "trace.txt";
  std::ofstream(path) << "before\n";
  std::error_code error = std::make_error_code(std::errc::io_error);
  Files& files = *systemServices().files;
  const auto first = files.openForAppend(path, error), second = files.openForAppend(path, error);
  ASSERT_TRUE(first && second && !error);
  EXPECT_FALSE(first->write("one\n"));
  EXPECT_FALSE(second->write("two\n"));
  EXPECT_FALSE(first->write("three\n"));
  std::string contents;
  std::getline(std::ifstream(path), contents, '\0');
  EXPECT_EQ(contents, "before\none\ntwo\nthree\n");
  ::setenv("XDG_STATE_HOME", folder.c_str(), 1);
  EXPECT_NE(files.openForAppend(R"(C:\IFTRACE.TXT)", error), nullptr);
  EXPECT_TRUE(fs::exists(folder / "zentaro" / "IFTRACE.TXT")) << "a path with a drive names no folder here";
}

TEST_F(SystemTest, FilesReportWhatTheSystemRefuses) {
  std::error_code error;
  Files& files = *systemServices().files;
  EXPECT_EQ(files.openForAppend(folder / "none" / "t", error), nullptr);
  EXPECT_EQ(error, std::errc::no_such_file_or_directory);
  EXPECT_EQ(files.openForAppend(folder, error), nullptr);
  EXPECT_EQ(error, std::errc::is_a_directory);
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(files.openForAppend(folder / "pipe", error), nullptr) << "a pipe without a reader must not block";
  const auto full = files.openForAppend("/dev/full", error);
  ASSERT_NE(full, nullptr);
  EXPECT_EQ(full->write("x"), std::errc::no_space_on_device);
}

TEST(HostTest, CallsBackAndSurvivesACallbackThatRemovesItself) {
  Host& host = *systemServices().host;
  int yields = 0;
  setYieldCallback([&yields, kept = std::string(100, 'k')] {
    setYieldCallback({});
    yields += static_cast<int>(kept.size());
  });
  EXPECT_TRUE(host.wantsYields());
  host.yield();
  host.yield();
  EXPECT_EQ(yields, 100);
  EXPECT_FALSE(host.wantsYields());
}

TEST(HostTest, BoxGoesToTheCallbackOrOnOneLineToStandardError) {
  Host& host = *systemServices().host;
  ::testing::internal::CaptureStderr();
  host.errorBox(u"modComm", u"No se abri\u00F3\r\nERR: 53");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "modComm: No se abri\xC3\xB3 ERR: 53\n");

  std::u16string shown;
  setMessageBoxCallback([&](std::u16string_view title, std::u16string_view text) {
    shown = std::u16string(title) + u"|" + std::u16string(text);
  });
  host.errorBox(u"modComm", u"a\r\nb");
  setMessageBoxCallback({});
  EXPECT_EQ(shown, u"modComm|a\r\nb");
}

TEST(ClockTest, TimeOfDayIsTheLocalTime) {
  Clock& clock = *systemServices().clock;
  const double before = clock.secondsSinceMidnight();
  const LocalTime local = clock.localTime();
  const double wall = local.hour * 3600 + local.minute * 60 + local.second;
  const double difference = std::abs(before - wall);
  EXPECT_TRUE(difference < 60 || difference > 86340) << before << " and " << wall;
}

}  // namespace
}  // namespace zentaro::testing
