// `zentaro doctor`: how ports are judged, and what it sees of real ones.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "support/process.h"
#include "tools/connection/virtual_printer.h"
#include "tools/doctor/port_facts.h"

namespace zentaro::tools::doctor_test {

using testing::contains;
using testing::Ran;

TEST(Ports, AreJudgedByTheFirstThingThatIsWrong) {
  PortFacts port{.name = "COM1"};
  EXPECT_EQ(judgePort(port).code, "absent") << "a port that nobody named need not be there";
  port.isConfigured = true;
  port.device = "/dev/ttyUSB0 ";
  EXPECT_TRUE(contains(judgePort(port).advice, "is the path \"/dev/ttyUSB0 \" as it should be?"));
  port.device = "/dev/ttyUSB0";
  EXPECT_EQ(judgePort(port).code, "device-missing");
  EXPECT_TRUE(contains(judgePort(port).advice, "connect the adapter")) << judgePort(port).advice;
  EXPECT_TRUE(contains(judgePort(port).advice, "zentaro settings set COM1 PATH"));
  port.exists = true;
  EXPECT_EQ(judgePort(port).code, "no-serial-device");
  port.isSerial = true;
  port.group = "dialout";
  EXPECT_EQ(judgePort(port).text, "this user may not read and write the device (group dialout)");
  EXPECT_TRUE(contains(judgePort(port).advice, "sudo usermod -aG dialout $USER"));
  port.group = "root";
  EXPECT_FALSE(contains(judgePort(port).advice, "usermod")) << "nobody joins the group of root";
  port.canReadAndWrite = true;
  port.holder = "till (process 12)";
  EXPECT_EQ(judgePort(port).text, "the port is taken by till (process 12)");
  port.holder.clear();
  EXPECT_FALSE(judgePort(port).isProblem);
  EXPECT_FALSE(contains(judgePort({.name = "--device", .isConfigured = true}).advice, "settings set"));
}

TEST(Ports, TellEachCauseOfAFailedOpeningApart) {
  for (const auto& [error, code] :
       std::initializer_list<std::pair<int, const char*>>{{EIO, "no-port"},
                                                          {ENOTTY, "no-serial-device"},
                                                          {EBUSY, "taken"},
                                                          {EACCES, "no-permission"},
                                                          {EMFILE, "cannot-open"}})
    EXPECT_EQ(judgeOpening(error, "", {}).code, code);
}

class Doctor : public testing::Shell {};

TEST_F(Doctor, AsksAPrinterThatIsThere) {
  const VirtualPrinter printer;
  const Ran ran = run("zentaro settings set COM3 " + printer.device() + " && zentaro doctor");
  EXPECT_TRUE(contains(ran.output, ": a printer answers; status words 0x0000, 0x0000\n")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "COM8 /dev/ttyS7: ")) << ran.output;
  EXPECT_TRUE(contains(run("zentaro doctor --virtual").output, "\n    --virtual: a printer answers"));
  // Nothing is wrong with the only port that it looks at.
  EXPECT_EQ(run("zentaro doctor --device " + printer.device()).status, 0);
  EXPECT_EQ(printer.paper(), "") << "it prints nothing";
}

TEST_F(Doctor, FindsAnOpenDocumentAndAWrongClockAndReportsNoTexts) {
  const VirtualPrinter printer;
  const std::string port = " --device " + printer.device();
  run("zentaro call SetDateTime 2026-01-01" + port + " && zentaro call IniciarFactura Penalver V-1" + port);
  const Ran ran = run("zentaro doctor --report " + file("report") + port);
  EXPECT_EQ(ran.status, 1);
  EXPECT_TRUE(contains(ran.output, "-> zentaro call --device " + printer.device() + " CancelarComprobante"))
      << ran.output;
  EXPECT_TRUE(contains(ran.output, "its clock is ")) << ran.output;
  const std::string report = folder.read("report");
  EXPECT_TRUE(contains(report, "status 0000 0001")) << report;
  EXPECT_FALSE(contains(report, "\"N\"")) << report;
}

TEST_F(Doctor, SaysWhoHasThePort) {
  const VirtualPrinter printer;
  const testing::Process till({"sh", "-c", "exec 3<>" + printer.device() + "; echo open >&2; exec sleep 60"});
  ASSERT_TRUE(till.says("open"));
  const Ran ran = run("zentaro doctor --device " + printer.device());
  EXPECT_EQ(ran.status, 1);
  EXPECT_TRUE(contains(ran.output, "the port is taken by s")) << ran.output;
}

TEST_F(Doctor, TellsSilenceFromAPortThatCannotBeOpened) {
  const int silent = ::posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_EQ(::grantpt(silent) + ::unlockpt(silent), 0);
  const Ran ran = run("zentaro doctor --timeout 1 --give-up 1 --device " + std::string(::ptsname(silent)));
  ::close(silent);
  EXPECT_EQ(ran.status, 1);
  EXPECT_TRUE(contains(ran.output, "the printer does not answer (1 TIEMPO AGOTADO)")) << ran.output;
  const Ran other = run("zentaro doctor --device /dev/full");
  EXPECT_EQ(other.status, 1);
  EXPECT_TRUE(contains(other.output, "this is no serial device")) << other.output;
}

TEST_F(Doctor, FindsSettingsThatCannotBeMeant) {
  write("settings.ini",
        "\xEF\xBB\xBF[Config\\EPSONZT]\nTimeOut=30\nTimeOutZT=9\nLenDescripcionZT=0\nrubbish\n[Config] ; x\n"
        "[Config\\ModComm]\nCOM1=/dev/none\nCOM2=/dev/../dev/none\n");
  const Ran ran = run("zentaro doctor");
  EXPECT_EQ(ran.status, 1);
  EXPECT_TRUE(contains(ran.output, "! [Config\\EPSONZT] TimeOut: no setting has this name")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "    [Config\\EPSONZT] TimeOutZT: 9\n")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "! [Config\\EPSONZT] LenDescripcionZT: \"0\" is no whole number from 1"))
      << ran.output;
  EXPECT_TRUE(contains(ran.output, "! line 5: \"rubbish\"")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "! line 6: \"[Config] ; x\" is neither")) << ran.output;
  EXPECT_FALSE(contains(ran.output, "line 1:")) << "a byte order mark is read over";
  EXPECT_TRUE(contains(ran.output, "! COM2: has the same device as COM1")) << ran.output;
}

}  // namespace zentaro::tools::doctor_test
