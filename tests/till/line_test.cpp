// The commands on lines that take their time, return what is sent, or are not the shop's.
#include <atomic>
#include <thread>

#include "base/files/json.h"
#include "platform/pseudo_terminal.h"
#include "support/tcp_printer.h"
#include "tools/connection/virtual_printer.h"

namespace zentaro::till::line_test {

using testing::contains;
using testing::Ran;

class RealLine : public testing::Shell {};

// Without getting in step the close takes the late answer to the line, and says OK for what was refused.
TEST_F(RealLine, NeverTakesALateAnswerForItsOwn) {
  std::vector<std::string> options{"--realtime", "--fault", "delay=1.6 on text; delay=1.6 on closing"};
  const tools::VirtualPrinter printer(options);
  options.insert(options.end(), {"--serial", "ZPV0000002"});
  const testing::TcpPrinter distant(options);
  for (const std::string& name : {printer.device(), distant.device()}) {
    const std::string device = " --timeout 1 --device " + name;
    EXPECT_EQ(run("zentaro call" + device + " PasarLineaExtra x").status, 1);
    const Ran close = run("zentaro call" + device + " CerrarComprobante T");
    EXPECT_TRUE(contains(close.output, "ERROR 03 NO HAY DOCUMENTO ABIERTO")) << close.output;
    const Ran day = run("zentaro cierre z" + device);
    EXPECT_EQ(day.status, 0) << day.output;
    EXPECT_TRUE(contains(day.output, "Z 00000001 PRINTED; its figures did not arrive")) << day.output;
  }
}

TEST_F(RealLine, TellsALineThatReturnsWhatIsSentFromAPrinter) {
  const testing::PseudoTerminal terminal;
  const int device =
      ::open(terminal.device().c_str(), O_RDWR | O_NOCTTY);  // else there is nothing to wait for
  std::atomic<bool> ends = false;
  std::thread echo([&] {
    while (!ends) terminal.send(terminal.receive());
  });
  const std::string line = " --timeout 1 --device " + terminal.device();
  for (const std::string& command : {"call" + line + " CerrarComprobante", "call" + line + " StatusIF N",
                                     "status" + line, "cierre z" + line}) {
    const Ran ran = run("zentaro " + command);
    EXPECT_NE(ran.status, 0) << command;
    EXPECT_TRUE(contains(ran.output, "the line returns what is sent")) << command << ran.output;
  }
  ends = true;
  EXPECT_EQ(::write(device, "\n", 1), 1) << "ends the wait of the echo";
  echo.join();
  ::close(device);
}

// Where a shop has its printer, a sale on another one is no success.
TEST_F(RealLine, TakesTheVirtualPrinterOnlyWhereNoneIsConfiguredOrItIsAskedFor) {
  EXPECT_EQ(Json::parse(run("zentaro status --json 2>/dev/null").output).at("virtual"), true);
  write("settings.ini", "[Config\\ModComm]\nCOM2=/dev/ttyUSB0\n");
  for (const char* command : {"status", "cierre z", "call CerrarComprobante"}) {
    const Ran ran = run(std::string("zentaro ") + command);
    EXPECT_EQ(ran.status, 2) << ran.output;
    EXPECT_TRUE(contains(ran.output, "a printer is configured (COM2 = /dev/ttyUSB0): say --port 2"))
        << ran.output;
  }
  const Ran asked = run("zentaro status --virtual");
  EXPECT_EQ(asked.status, 0) << asked.output;
  EXPECT_TRUE(contains(asked.output, "ON THE VIRTUAL PRINTER: not a fiscal document\n")) << asked.output;
}

}  // namespace zentaro::till::line_test
