// `zentaro setup`: what it would change, and that it asks.
#include <filesystem>

#include "platform/settings_text.h"
#include "support/process.h"
#include "tools/connection/virtual_printer.h"
#include "tools/setup/changes.h"

namespace zentaro::tools::setup_test {

namespace files = std::filesystem;
using testing::contains;
using testing::Ran;

TEST(Setup, TakesTheFirstPortThatNobodyHas) {
  const testing::Scratch folder;
  folder.write("printer", "");
  files::create_symlink("printer", folder / "link");
  const std::string device = folder / "printer", link = folder / "link";
  const auto chosen = [&](const std::string& ports) {
    const auto port = portFor(device, SettingsText("[Config\\ModComm]\n" + ports));
    return port ? port->name + (port->isSet ? " set" : "") : "none";
  };
  EXPECT_EQ(chosen(""), "COM1");
  EXPECT_EQ(chosen("COM1=/dev/other\nCOM3=/dev/third\n"), "COM2");
  EXPECT_EQ(chosen("COM1=\nCOM4=" + link + "\n"), "COM4 set") << "by whatever name";
  EXPECT_EQ(chosen("COM1=a\nCOM2=b\nCOM3=c\nCOM4=d\nCOM5=e\nCOM6=f\nCOM7=g\nCOM8=h\n"), "none");
}

TEST(Setup, KnowsTheNameThatStays) {
  const testing::Scratch root;
  const std::string top = (root / "").parent_path().string();
  for (const char* folder : {"dev/fiscal", "dev/serial/by-id"}) files::create_directories(root / folder);
  root.write("dev/ttyUSB0", "");
  EXPECT_EQ(lastingName("/dev/ttyUSB0", top), "/dev/ttyUSB0");
  files::create_symlink("../../ttyUSB0", root / "dev/serial/by-id/usb-A50285BI");
  EXPECT_EQ(lastingName("/dev/ttyUSB0", top), "/dev/serial/by-id/usb-A50285BI");
  files::create_symlink("../ttyUSB0", root / "dev/fiscal/A50285BI");
  EXPECT_EQ(lastingName("/dev/ttyUSB0", top), "/dev/fiscal/A50285BI");
}

TEST(Setup, KnowsWhoIsInAGroup) {
  EXPECT_TRUE(isMember("root", "dialout")) << "root needs none";
  EXPECT_TRUE(isMember("daemon", "daemon"));
  EXPECT_FALSE(isMember("daemon", "dialout"));
  EXPECT_FALSE(isMember("nobody-of-that-name", "dialout") || isMember("daemon", "no-such-group"));
}

class SetupCommand : public testing::Shell {
 protected:
  // The answers are typed; returns what was said and how it ended.
  Ran answered(const std::string& answers, const std::string& words) const {
    write("answers", answers);
    testing::Process shell(
        {"sh", "-c",
         "exec 2>&1 <" + file("answers") + "; cd " + file("") + "; ulimit -t 60; zentaro setup " + words});
    const int status = shell.end();
    return {shell.output(), status};
  }
};

TEST_F(SetupCommand, ChangesNothingWithoutAYes) {
  const VirtualPrinter printer({"--log", file("log")});
  struct Row {
    const char* answers;
    int status;
    bool isAsked, isSet, isPrinted, isReported;
  };
  for (const Row& row :
       {Row{"", 1, false, false, false, false}, Row{"n\n", 1, false, false, false, false},
        Row{"y\nno\nn\nn\n", 0, true, false, false, false}, Row{"y\nn\ny\nn\n", 0, true, false, true, false},
        Row{"y\ny\nn\nyes\n", 0, true, true, false, true}}) {
    const std::string before = folder.read("log"), paper = printer.paper();
    const Ran ran = answered(row.answers, "--device " + printer.device());
    EXPECT_EQ(ran.status, row.status) << ran.output;
    EXPECT_EQ(folder.read("log") != before, row.isAsked) << ran.output;
    EXPECT_EQ(contains(ran.output, "found ZPV0000001 at " + printer.device()), row.isAsked) << ran.output;
    EXPECT_EQ(contains(folder.read("settings.ini"), "COM1=" + printer.device()), row.isSet) << ran.output;
    EXPECT_EQ(printer.paper() != paper, row.isPrinted) << ran.output;
    EXPECT_EQ(contains(folder.read("zentaro-report.txt"), "ZPV0000001"), row.isReported) << ran.output;
  }
  EXPECT_TRUE(contains(answered("y\nn\nn\n", "--device " + printer.device()).output, "it is COM1 already"));
}

TEST_F(SetupCommand, TakesYesForNamedDevicesOnly) {
  const VirtualPrinter printer;
  const Ran all = answered("", "--yes --json");
  EXPECT_EQ(all.status, 1) << "what nobody named is not asked" << all.output;
  EXPECT_FALSE(contains(all.output, "\"printer\": true")) << all.output;
  const Ran named = answered("", "--yes --json --device " + printer.device());
  EXPECT_EQ(named.status, 0) << named.output;
  EXPECT_TRUE(contains(named.output, "\"port\": \"COM1\"")) << named.output;
  EXPECT_EQ(run("zentaro settings get COM1").output, printer.device() + "\n");
  EXPECT_EQ(printer.paper(), "") << "a sheet is printed on demand";
}

// In a world of its own, so that the machine's file stays as it is.
TEST_F(SetupCommand, WritesAsRootForAllUsers) {
  const VirtualPrinter printer;
  const std::string world = "unset ZENTARO_SETTINGS; export HOME=" + file("home") +
                            "; mkdir -p $HOME; unshare -rm sh -c 'mount -t tmpfs none /etc/xdg";
  if (run(world + "'").status != 0) GTEST_SKIP() << "no mounts of one's own here";
  const Ran ran = run(world + "; zentaro setup --yes --device " + printer.device() +
                      "; cat /etc/xdg/TRV/settings.ini; find $HOME -type f'");
  EXPECT_TRUE(ran.output.ends_with("\n[Config\\ModComm]\nCOM1=" + printer.device() + "\n")) << ran.output;
}

TEST_F(SetupCommand, TellsAPrinterFromOtherThings) {
  const int silent = ::posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_EQ(::grantpt(silent) + ::unlockpt(silent), 0);
  const Ran ran = answered("", "--yes --device " + std::string(::ptsname(silent)) + " --device /dev/null");
  ::close(silent);
  EXPECT_EQ(ran.status, 1);
  EXPECT_TRUE(contains(ran.output, "the printer does not answer")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "/dev/null: this is no serial device")) << ran.output;
  EXPECT_EQ(folder.read("settings.ini"), "");
}

}  // namespace zentaro::tools::setup_test
