// `zentaro doctor`: how ports are judged, and what it sees of real ones.
#include <fcntl.h>
#include <unistd.h>

#include "common/child_process.h"
#include "common/virtual_printer.h"
#include "doctor/port_facts.h"
#include "tools-call/program.h"

namespace zentaro::tools {
namespace {

using testing::contains;
using testing::Ran;

PortFacts facts(const std::string& name, bool isConfigured) {
  PortFacts port;
  port.name = name;
  port.isConfigured = isConfigured;
  return port;
}

TEST(Ports, AreJudgedByTheFirstThingThatIsWrong) {
  PortFacts port = facts("COM1", false);
  EXPECT_FALSE(judgePort(port).isProblem) << "a port that nobody named need not be there";
  port.isConfigured = true;
  EXPECT_EQ(judgePort(port).text, "the device is missing");
  EXPECT_TRUE(contains(judgePort(port).advice, "zentaro settings set COM1 PATH"));
  port.exists = true;
  EXPECT_EQ(judgePort(port).text, "this is no serial device");
  port.isCharacterDevice = true;
  port.group = "dialout";
  EXPECT_EQ(judgePort(port).text, "this user may not read and write the device (group dialout)");
  EXPECT_TRUE(contains(judgePort(port).advice, "sudo usermod -aG dialout $USER"));
  port.canReadAndWrite = true;
  port.holder = "till (process 12)";
  EXPECT_EQ(judgePort(port).text, "the port is taken by till (process 12)");
  port.holder.clear();
  EXPECT_FALSE(judgePort(port).isProblem);
  EXPECT_EQ(judgePort(facts("--device", true)).advice.find("settings set"), std::string::npos);
}

class Doctor : public testing::Shell {};

TEST_F(Doctor, AsksAPrinterThatIsThere) {
  const VirtualPrinter printer;
  const Ran ran = run("zentaro settings set COM3 " + printer.device() + " && zentaro doctor");
  EXPECT_EQ(ran.status, 0) << ran.output;
  EXPECT_TRUE(contains(ran.output, ": a printer answers: 0 OK\n")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "COM8 /dev/ttyS7: ")) << ran.output;
  EXPECT_EQ(printer.paper(), "") << "it prints nothing";
}

TEST_F(Doctor, SaysWhoHasThePort) {
  const VirtualPrinter printer;
  ChildProcess till({"sh", "-c", "exec 3<>" + printer.device() + "; echo open >&2; exec sleep 60"});
  std::string line;
  ASSERT_TRUE(till.readErrorLine(line, 10000)) << line;
  const Ran ran = run("zentaro doctor --device " + printer.device());
  EXPECT_EQ(ran.status, 1);
  EXPECT_TRUE(contains(ran.output, "the port is taken by s")) << ran.output;
}

TEST_F(Doctor, TellsSilenceFromAPortThatCannotBeOpened) {
  const int silent = ::posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_EQ(::grantpt(silent) + ::unlockpt(silent), 0);
  const Ran ran = run("zentaro doctor --timeout 1 --device " + std::string(::ptsname(silent)));
  ::close(silent);
  EXPECT_EQ(ran.status, 1);
  EXPECT_TRUE(contains(ran.output, "no valid answer to a status request: 1 TIEMPO AGOTADO")) << ran.output;
  const Ran other = run("zentaro doctor --device /dev/full");
  EXPECT_EQ(other.status, 1);
  EXPECT_TRUE(contains(other.output, "the port cannot be opened: Error (")) << other.output;
}

TEST_F(Doctor, FindsSettingsThatNobodyReads) {
  write("settings.ini", "[Config\\EPSONZT]\nTimeOut=30\nTimeOutZT=9\n");
  const Ran ran = run("zentaro doctor");
  EXPECT_EQ(ran.status, 1);
  EXPECT_TRUE(contains(ran.output, "! [Config\\EPSONZT] TimeOut: no setting has this name")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "    [Config\\EPSONZT] TimeOutZT: 9\n")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "no port has been given a device, so no printer was asked")) << ran.output;
}

}  // namespace
}  // namespace zentaro::tools
