// `zentaro settings`: what it shows, and that a change neither loses a line nor leaves half a file.
#include <sys/stat.h>
#include <unistd.h>

#include "support/process.h"

namespace zentaro::tools::settings_test {

using testing::contains;
using testing::Ran;

class Settings : public testing::Shell {
 protected:
  std::string stored() const { return folder.read("settings.ini"); }
};

TEST_F(Settings, AreListedWithTheirSource) {
  write("settings.ini", "[config\\epsonzt]\ntimeoutzt=30\n");
  const std::string list = run("zentaro settings list | tr -s ' '").output;
  EXPECT_TRUE(contains(list, "File: " + file("settings.ini") + "\n")) << list;
  EXPECT_TRUE(contains(list, "\nTimeOutZT 30 set\n time-out of an answer in whole seconds (default: 12)\n"))
      << list;
  EXPECT_TRUE(contains(list, "\nDumpFile (empty) default\n file of the driver trace\n")) << list;
  EXPECT_TRUE(contains(list, "\nCOM8 /dev/ttyS7 default\n device of serial port 8\n")) << list;
  EXPECT_EQ(run("zentaro settings get TimeOutzt").output, "30\n");
  EXPECT_TRUE(
      contains(run("zentaro settings list --json").output, "\"value\": \"30\",\n      \"source\": \"set\""));
}

// In a world of its own, so that the machine's file stays as it is.
TEST_F(Settings, OfTheMachineHoldWhereTheUserHasNone) {
  const std::string world =
      "unset ZENTARO_SETTINGS; export HOME=" + file("home") + "; mkdir -p $HOME; unshare -rm sh -c '";
  if (run(world + "mount -t tmpfs none /etc/xdg'").status != 0) GTEST_SKIP() << "no mounts of one's own here";
  const Ran ran = run(world + R"(mount -t tmpfs none /etc/xdg
zentaro settings set --system COM1 ttyUSB7; zentaro settings set --system COM2 ttyUSB8; zentaro settings set COM2 ttyUSB9
cat /etc/xdg/TRV/settings.ini; zentaro settings get COM1; zentaro settings get COM2
zentaro settings list | tr -s " "; zentaro doctor | grep "COM[123]"
zentaro settings unset --system COM1; zentaro settings get COM1')");
  for (const char* part :
       {"[Config\\ModComm]\nCOM1=/dev/ttyUSB7\nCOM2=/dev/ttyUSB8\n/dev/ttyUSB7\n/dev/ttyUSB9\n",
        "\nCOM1 /dev/ttyUSB7 machine\n", "\nCOM2 /dev/ttyUSB9 set\n", "\nCOM3 /dev/ttyS2 default\n",
        "! COM1 /dev/ttyUSB7: the device is missing\n"})
    EXPECT_TRUE(contains(ran.output, part)) << part << ran.output;
  EXPECT_TRUE(ran.output.ends_with("\n/dev/ttyS0\n")) << ran.output;
}

TEST_F(Settings, KeepEveryOtherLineWhenOneChanges) {
  write("settings.ini", "; mine\n[Config\\EPSONZT]\nTimeOutZT=30\nrubbish\n[Other]\nx=1\n");
  EXPECT_EQ(run("zentaro settings set timeoutzt 5 && zentaro settings set COM2 '/dev/tty USB0'").status, 0);
  EXPECT_EQ(stored(),
            "; mine\n[Config\\EPSONZT]\nTimeOutZT=5\nrubbish\n[Other]\nx=1\n[Config\\ModComm]\nCOM2=/dev/tty "
            "USB0\n");
  EXPECT_EQ(run("ls " + file("")).output, "settings.ini\n") << "no temporary file is left";
}

TEST_F(Settings, KeepWhatEightCommandsSetAtOnce) {
  run("for n in 1 2 3 4 5 6 7 8; do zentaro settings set COM$n /dev/x$n & done; wait");
  for (int port = 1; port <= 8; ++port)
    EXPECT_TRUE(contains(stored(), "COM" + std::to_string(port) + "=/dev/x")) << stored();
}

TEST_F(Settings, TakeWhatAPersonInAHurryTypes) {
  struct {
    const char* words;
    const char* stored;
  } const rows[] = {{"set DebugZT sí", "[Config\\EPSONZT]\nDebugZT=1\n"},
                    {"set DEBUGZT No", "[Config\\EPSONZT]\nDebugZT=0\n"},
                    {"set COM2 ttyUSB0", "[Config\\ModComm]\nCOM2=/dev/ttyUSB0\n"},
                    {"set DumpZT ttyUSB0", "[Config\\EPSONZT]\nDumpZT=ttyUSB0\n"},
                    {"unset TimeOutZT", "[Config\\EPSONZT]\n"},
                    {"unset DumpZT", "[Config\\EPSONZT]\nTimeOutZT=7\ntimeoutzt=8\n"}};
  for (const auto& row : rows) {
    const bool isUnset = contains(row.words, "unset");
    write("settings.ini", isUnset ? "[Config\\EPSONZT]\nTimeOutZT=7\ntimeoutzt=8\n" : "");
    EXPECT_EQ(run(std::string("zentaro settings ") + row.words).status, 0) << row.words;
    EXPECT_EQ(stored(), row.stored) << row.words;
  }
  const Ran refused = run("zentaro settings set DebugZT quizás");
  EXPECT_EQ(refused.status, 2);
  EXPECT_TRUE(contains(refused.output, "DebugZT is 1 (yes) or 0 (no), not \"quizás\"; nothing was changed"))
      << refused.output;
  EXPECT_TRUE(contains(run("zentaro settings get TimeOut").output, "did you mean TimeOutZT?"));
}

TEST_F(Settings, MakeTheFolderOfTheFile) {
  const std::string at = "ZENTARO_SETTINGS=" + file("a/b/settings.ini") + " zentaro settings ";
  EXPECT_EQ(run(at + "set DebugZT 1; " + at + "get DebugZT").output, "1\n");
}

TEST_F(Settings, KeepLinkAndPermissionsOfTheFile) {
  write("real.ini", "");
  ::chmod(file("real.ini").c_str(), 0640);
  ::symlink("real.ini", file("settings.ini").c_str());
  EXPECT_EQ(run("zentaro settings set DebugZT 1").status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(file("settings.ini")));
  EXPECT_EQ(folder.read("real.ini"), "[Config\\EPSONZT]\nDebugZT=1\n");
  EXPECT_EQ(std::filesystem::status(file("real.ini")).permissions(), std::filesystem::perms(0640));
}

TEST_F(Settings, StayAsTheyAreWhenTheNewOneIsRefused) {
  const std::string before = "[Config\\EPSONZT]\nTimeOutZT=30\n";
  write("settings.ini", before);
  const std::pair<const char*, const char*> rows[] = {
      {"set TimeOutZT 0", "must be a whole number from 1 to 32767, not \"0\""},
      {"set TimeOutZT 12s", "not \"12s\""},
      {"set LenDescripcionZT 32768", "from 1 to 32767"},
      {"set SuprimirDecimalesEZT ''", "from 0 to 32767"},
      {"set Nope 1", "no setting \"Nope\": there are TimeOutZT"},
      {"get Nope", "no setting \"Nope\""},
      {"set DumpZT \"$(printf 'a\\nb')\"", "zentaro: "},
  };
  for (const auto& [words, message] : rows) {
    const Ran ran = run(std::string("zentaro settings ") + words);
    EXPECT_EQ(ran.status, 2) << words;
    EXPECT_TRUE(contains(ran.output, message)) << words << ": " << ran.output;
    EXPECT_EQ(stored(), before) << words;
  }
}

TEST_F(Settings, SayWhyTheyCannotBeReadOrWritten) {
  ::mkfifo(file("fifo").c_str(), 0600);
  const std::pair<std::string, const char*> rows[] = {
      {file(""), "is no file"},
      {file("fifo"), "is no file"},
      {"/proc/version/settings.ini", "cannot read"},
  };
  for (const auto& [path, message] : rows) {
    const Ran ran = run("ZENTARO_SETTINGS=" + path + " zentaro settings set DebugZT 1");
    EXPECT_EQ(ran.status, 2) << path;
    EXPECT_TRUE(contains(ran.output, message)) << ran.output;
  }
}

}  // namespace zentaro::tools::settings_test
