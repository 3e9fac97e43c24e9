// Settings file, device names, files opened for appending, and the host's callbacks.
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <thread>

#include "platform/posix/posix_services.h"
#include "platform/posix/settings_file.h"
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
}

TEST_F(SystemTest, FilesBelongWhereTheEnvironmentSays) {
  struct Row {
    const char *variable, *value, *settings, *state;
  };
  const std::string machine = systemSettingsPath();
  EXPECT_EQ(machine, "/etc/xdg/TRV/settings.ini");
  EXPECT_EQ(settingsPaths(), std::vector<std::string>{folder / "settings.ini"}) << "stands alone";
  ::setenv("HOME", "/home/caja", 1);
  for (const char* name : {"ZENTARO_SETTINGS", "XDG_CONFIG_HOME", "XDG_STATE_HOME"}) ::unsetenv(name);
  const std::string atHome = "/home/caja/.config", stateAtHome = "/home/caja/.local/state";
  for (const Row& row : {Row{"XDG_CONFIG_HOME", "/config", "/config", stateAtHome.c_str()},
                         {"XDG_CONFIG_HOME", "", atHome.c_str(), stateAtHome.c_str()},
                         {"XDG_CONFIG_HOME", "config", atHome.c_str(), stateAtHome.c_str()},
                         {"XDG_STATE_HOME", "/state", atHome.c_str(), "/state"},
                         {"XDG_STATE_HOME", "state", atHome.c_str(), stateAtHome.c_str()}}) {
    ::setenv(row.variable, row.value, 1);
    const std::string settings = std::string(row.settings) + "/TRV/settings.ini";
    EXPECT_EQ(settingsPath(), settings) << row.value;
    EXPECT_EQ(settingsPaths(), (std::vector{settings, machine})) << row.value;
    EXPECT_EQ(stateFolder(), std::string(row.state) + "/zentaro") << row.value;
    ::unsetenv(row.variable);
  }
  const std::string homeOfUser = ::getpwuid(::getuid())->pw_dir;
  for (const char* home : {"", "caja"}) {
    ::setenv("HOME", home, 1);
    EXPECT_EQ(stateFolder(), homeOfUser + "/.local/state/zentaro") << "the home of the user database";
  }
}

TEST_F(SystemTest, KeysOfTheUserWinAndTheMachinesFillIn) {
  folder.write("user", "[Config\\ModComm]\nDEBUG=1\nCOM1=\n");
  folder.write("machine", "[Config\\ModComm]\nDEBUG=2\nCOM1=/dev/a\nCOM2=/dev/b\n");
  const std::vector<std::string> paths{folder / "user", folder / "machine"}, both{folder / "", paths[1]};
  const auto value = [](const auto& files, const char* key) {
    return posix::firstValue(files, "Config\\ModComm", key);
  };
  EXPECT_EQ(value(paths, "DEBUG"), "1");
  EXPECT_EQ(value(paths, "COM1"), "");
  EXPECT_EQ(value(paths, "COM2"), "/dev/b");
  EXPECT_EQ(value(paths, "COM3"), std::nullopt);
  EXPECT_EQ(value(both, "DEBUG"), "2") << "what cannot be read counts as absent";
}

TEST_F(SystemTest, SettingsThatCannotBeReadAreTold) {
  writeSettings("[a]\nb=c\n");
  folder.write("large", std::string((1 << 20) + 1, '\n'));
  std::filesystem::create_symlink("loop", folder / "loop");
  std::filesystem::create_symlink("gone", folder / "dangling");
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  struct Row {
    const char* name;
    std::errc reason;
  };
  for (const Row& row : {Row{"settings.ini", {}},
                         {"none", {}},
                         {"none/none", {}},
                         {"settings.ini/none", {}},
                         {"dangling", {}},
                         {".", std::errc::is_a_directory},
                         {"loop", std::errc::too_many_symbolic_link_levels},
                         {"large", std::errc::file_too_large},
                         {"pipe", std::errc::not_supported}}) {
    useSettings(row.name);
    const auto unreadable = unreadableSettings();
    EXPECT_EQ(unreadable.has_value(), row.reason != std::errc{}) << row.name;
    if (!unreadable) continue;
    EXPECT_EQ(unreadable->reason, row.reason) << row.name;
    EXPECT_EQ(unreadable->path, folder / row.name);
    EXPECT_EQ(debug(), u"default") << row.name;
  }
  const auto second = posix::firstUnreadable({folder / "settings.ini", folder / "loop"});
  EXPECT_TRUE(second && second->path == folder / "loop") << "the machine's, too";
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
  for (const auto& [name, file] : {std::pair{R"(C:\IFTRACE.TXT)", "zentaro/IFTRACE.TXT"},
                                   {"d:TRACE.TXT", "zentaro/TRACE.TXT"},
                                   {"C:/a/b/T", "zentaro/T"}}) {
    EXPECT_NE(files.openForAppend(name, error), nullptr);
    EXPECT_TRUE(std::filesystem::exists(folder / file))
        << "a path with a drive names no folder here: " << name;
  }
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
  std::thread([&host] { EXPECT_FALSE(host.wantsYields()) << "each thread has its own"; }).join();
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

TEST(ClockTest, ShowsTheLocalTimeAndRunsOnPastMidnight) {
  ::setenv("TZ", "XXX-5:45", 1);  // east of Greenwich by 5:45
  ::tzset();
  const auto apart = [](double first, double second) {
    const double difference = std::abs(first - second);
    return std::min(difference, 86400 - difference);
  };
  const double here = std::fmod(static_cast<double>(std::time(nullptr)) + 5 * 3600 + 45 * 60, 86400);
  const LocalTime local = systemServices().clock->localTime();
  EXPECT_LT(apart(local.hour * 3600 + local.minute * 60 + local.second, here), 60);
  EXPECT_LT(apart(posix::clockFrom()->secondsSinceMidnight(), here), 60);
  ::unsetenv("TZ");
  ::tzset();
  EXPECT_GE(posix::clockFrom(86399.9999999)->secondsSinceMidnight(), 86400) << "a deadline goes on, too";
}

}  // namespace zentaro::testing::system_test
