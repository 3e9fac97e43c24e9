// Settings file, device names, files opened for appending, and the host's callbacks.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

#include "platform/services.h"
#include "platform/system_paths.h"
#include "support/scratch.h"

namespace zentaro::testing::system_test {

class SystemTest : public ::testing::Test {
 protected:
  Scratch folder;
  SettingsStore& store = *systemServices().settings;

  SystemTest() { useSettings("settings.ini"); }
  ~SystemTest() override { ::unsetenv("ZENTARO_SETTINGS"); }
  void useSettings(const std::string& name) const {
    ::setenv("ZENTARO_SETTINGS", (folder / name).c_str(), 1);
  }
  void writeSettings(const std::string& text) const { folder.write("settings.ini", text); }
  std::u16string debug() const { return store.read("TRV", "Config\\ModComm", "DEBUG", u"default"); }
};

TEST_F(SystemTest, SettingsAreReadAfreshAndNeverFail) {
  EXPECT_EQ(debug(), u"default") << "no file";
  writeSettings("[config\\MODCOMM]\ndebug=\xC3\xA9\nDumpFile=/tmp/t\n");
  EXPECT_EQ(debug(), u"\u00E9");
  EXPECT_EQ(store.read("Other", "Config\\ModComm", "DEBUG", u"default"), u"default");
  writeSettings("[Config\\ModComm]\nDEBUG=1\n");
  EXPECT_EQ(debug(), u"1");

  writeSettings("[Config\\ModComm]\nDEBUG=1\n" + std::string(1 << 20, '\n'));
  EXPECT_EQ(debug(), u"default") << "more than a settings file holds";

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
  folder.write("trace.txt", "before\n");
  std::error_code error = std::make_error_code(std::errc::io_error);
  Files& files = *systemServices().files;
  const auto first = files.openForAppend(path, error), second = files.openForAppend(path, error);
  ASSERT_TRUE(first && second && !error);
  EXPECT_FALSE(first->write("one\n"));
  EXPECT_FALSE(second->write("two\n"));
  EXPECT_FALSE(first->write("three\n"));
  EXPECT_EQ(folder.read("trace.txt"), "before\none\ntwo\nthree\n");
  ::setenv("XDG_STATE_HOME", (folder / "").c_str(), 1);
  EXPECT_NE(files.openForAppend(R"(C:\IFTRACE.TXT)", error), nullptr);
  EXPECT_TRUE(std::filesystem::exists(folder / "zentaro/IFTRACE.TXT"))
      << "a path with a drive names no folder here";
}

TEST_F(SystemTest, FilesReportWhatTheSystemRefuses) {
  std::error_code error;
  Files& files = *systemServices().files;
  EXPECT_EQ(files.openForAppend(folder / "none/t", error), nullptr);
  EXPECT_EQ(error, std::errc::no_such_file_or_directory);
  EXPECT_EQ(files.openForAppend(folder / "", error), nullptr);
  EXPECT_EQ(error, std::errc::is_a_directory);
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(files.openForAppend(folder / "pipe", error), nullptr) << "a pipe without a reader must not block";
  const auto full = files.openForAppend("/dev/full", error),
             small = files.openForAppend(folder / "small", error);
  ASSERT_TRUE(full != nullptr && small != nullptr);
  EXPECT_EQ(full->write("x"), std::errc::no_space_on_device);
  const SizeLimit limit(4);
  EXPECT_EQ(small->write("123456"), std::errc::file_too_large) << "four bytes had room";
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

}  // namespace zentaro::testing::system_test
