// `zentaro doctor`: how ports are judged, and what it sees of real ones.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "base/terminal/layout.h"
#include "support/process.h"
#include "support/responder.h"
#include "till/books/books.h"
#include "tools/connection/virtual_printer.h"
#include "tools/doctor/port_facts.h"
#include "tools/doctor/printer_facts.h"
#include "tools/status/status_bits.h"

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
  EXPECT_TRUE(contains(judgePort(port).advice, terminal::whole("zentaro settings set COM1 PATH")));
  port.exists = true;
  EXPECT_EQ(judgePort(port).code, "no-serial-device");
  port.isSerial = true;
  port.group = "dialout";
  EXPECT_EQ(judgePort(port).text, "this user may not read and write the device (group dialout)");
  EXPECT_TRUE(contains(judgePort(port).advice, terminal::whole("sudo usermod -aG dialout $USER")));
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
  struct Row {
    int error;
    const char *onDevice, *overTcp;
  };
  for (const Row& row : std::initializer_list<Row>{{EIO, "no-port", "no-port"},
                                                   {ENXIO, "no-port", "unknown-host"},
                                                   {ENOTTY, "no-serial-device", "no-serial-device"},
                                                   {EBUSY, "taken", "taken"},
                                                   {EACCES, "no-permission", "no-permission"},
                                                   {ECONNREFUSED, "cannot-open", "refused"},
                                                   {ETIMEDOUT, "cannot-open", "unreachable"},
                                                   {EINVAL, "cannot-open", "bad-address"},
                                                   {EMFILE, "cannot-open", "cannot-open"}}) {
    EXPECT_EQ(judgeOpening(row.error, "", {.device = "/dev/ttyUSB0"}).code, row.onDevice) << row.error;
    EXPECT_EQ(judgeOpening(row.error, "", {.device = "tcp://caja:4001"}).code, row.overTcp) << row.error;
  }
}

TEST(Ports, OverTcpAreTakenFarAway) {
  const PortFacts far{.device = "tcp://caja:4001"}, here{.device = "tcp://caja:4001", .holder = "till"};
  EXPECT_TRUE(contains(judgeOpening(EBUSY, "", far).text, "the device server hung up at once"));
  EXPECT_EQ(judgeOpening(EBUSY, "", here).text, "the port is taken by till");
}

TEST(Printers, AreJudgedByWhatTheySayAndNoFurther) {
  struct Row {
    std::int32_t word;
    Bits bits;
    int document;
    const char *said, *never;
  };
  for (const Row& row :
       {Row{0, Bits::Known, 0, "a printer answers", "!"},
        Row{0x0020, Bits::Known, 0, "! X: the paper is out", "cannot read"},
        Row{0x0020, Bits::Unknown, 0, "! X: I cannot read 0x0020", "paper is out"},
        Row{0, Bits::Known, 1, "-> zentaro call --port 1 CancelarComprobante", "Cerrar"},
        Row{0, Bits::Known, 3, "-> zentaro call --port 1 CerrarDNF", "Cancelar"},
        Row{0, Bits::Known, 4, "-> zentaro call --port 1 CerrarComprobante E", "Cancelar"}}) {
    PrinterFacts facts;
    facts.heard = till::Heard::InStep;
    facts.words = {row.word, 0};
    facts.bits = row.bits;
    facts.document = row.document;
    Findings findings;
    judgePrinter(facts, "X", "--port 1", findings);
    EXPECT_TRUE(contains(terminal::plain(findings.text()), row.said)) << findings.text();
    EXPECT_FALSE(contains(terminal::plain(findings.text()), row.never)) << findings.text();
  }
}

// A machine's devices as the kernel lists them: one UART, one number without, the console, one on USB with a name.
TEST(SerialDevices, AreThoseWithHardware) {
  namespace files = std::filesystem;
  const testing::Scratch root;
  for (const auto& [name, type] : std::initializer_list<std::pair<const char*, const char*>>{
           {"ttyS0", "4"}, {"ttyS4", "0"}, {"console", "4"}, {"ttyUSB0", ""}, {"tty1", "none"}}) {
    const std::string folder = std::string("sys/class/tty/") + name;
    files::create_directories(root / folder);
    if (type != std::string("none")) files::create_directories(root / (folder + "/device"));
    if (type[0] != '\0') root.write(folder + "/type", std::string(type) + "\n");
  }
  files::create_symlink("../../../bus/drivers/ftdi_sio", root / "sys/class/tty/ttyUSB0/device/driver");
  files::create_directories(root / "dev/serial/by-id");
  files::create_symlink("../../ttyUSB0", root / "dev/serial/by-id/usb-FTDI_A50285BI-if00-port0");
  std::string seen;
  for (const SerialDevice& device : serialDevices((root / "").parent_path().string()))
    seen += device.path + "," + device.driver + "," + device.byId + ";";
  EXPECT_EQ(seen, "/dev/ttyS0,,;/dev/ttyUSB0,ftdi_sio,/dev/serial/by-id/usb-FTDI_A50285BI-if00-port0;");
}

// Codes of what wants somebody, and what is left that nobody can read.
TEST(StatusBits, AreToldOrCountAsUnreadable) {
  struct Row {
    StatusWords words;
    Bits bits;
    std::string codes;
    StatusWords rest;
  };
  for (const Row& row : {
           Row{{0, 0}, Bits::Known, "", {}},
           Row{{0x0020, 0}, Bits::Known, "paper-out ", {}},
           Row{{0x0014, 0x8000}, Bits::Known, "cover-open paper-near-end ", {}},
           Row{{0x0100, 0x003F}, Bits::Known, "", {}},  // slip station, open documents, an open day
           Row{{0, 0x01C0}, Bits::Known, "closing-required memory-full memory-near-full ", {}},
           Row{{0x0021, 0x4000}, Bits::Known, "paper-out ", {0x0001, 0x4000}},
           Row{{0x8020, 0x0600}, Bits::Unknown, "", {0x0020, 0x0600}},
       }) {
    std::string codes;
    for (const Condition& condition : conditionsIn(row.words, row.bits, "--port 2")) {
      codes += condition.code + " ";
      EXPECT_NE(condition.advice, "");
    }
    const StatusWords rest = unreadable(row.words, row.bits);
    EXPECT_EQ(codes, row.codes);
    EXPECT_EQ(rest.printer, row.rest.printer) << row.codes;
    EXPECT_EQ(rest.fiscal, row.rest.fiscal) << row.codes;
  }
  EXPECT_EQ(conditionsIn({0, 0x0100}, Bits::Known, "--port 2")[0].advice,
            terminal::whole("zentaro cierre z --port 2"));
}

class Doctor : public testing::Shell {};

TEST_F(Doctor, NamesWhatIsWrongWithALineOverTcp) {
  const VirtualPrinter printer({"--tcp", "0"});
  const std::string line = "tcp://" + printer.device();
  EXPECT_TRUE(contains(run("zentaro doctor --device " + line).output, ": a printer answers"));
  for (const auto& [device, code] : std::initializer_list<std::pair<std::string, const char*>>{
           {"tcp://127.0.0.1:1", "refused"}, {"tcp://127.0.0.1", "bad-address"}}) {
    const Ran ran = run("zentaro doctor --json --device " + device);
    EXPECT_EQ(ran.status, 1) << ran.output;
    EXPECT_TRUE(contains(ran.output, std::string("\"finding\": \"") + code + '"')) << ran.output;
  }
}

TEST_F(Doctor, AsksAPrinterThatIsThere) {
  const VirtualPrinter printer;
  const Ran ran = run("zentaro settings set COM3 " + printer.device() + " && zentaro doctor");
  EXPECT_TRUE(contains(ran.output, ": a printer answers; status words 0x0000, 0x0000\n")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "its serial number is ZPV0000001")) << ran.output;
  for (const std::string other :
       {"1", "2", "4", "5", "6", "7", "8"}) {  // which nobody named: they are not asked
    EXPECT_TRUE(contains(ran.output, "\n    COM" + other + " /dev/ttyS")) << ran.output;
    EXPECT_FALSE(contains(ran.output, "! COM" + other)) << ran.output;
  }
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
  EXPECT_TRUE(contains(ran.output, "its clock says 2026-01-01 00:0")) << ran.output;
  EXPECT_TRUE(contains(ran.output, ", and this computer's " + run("date +%F").output.substr(0, 10)))
      << ran.output;
  const std::string report = folder.read("report");
  EXPECT_TRUE(contains(report, "status 0000 0001")) << report;
  EXPECT_FALSE(contains(report, "\"N\"")) << report;
}

TEST_F(Doctor, TellsWhatThePrinterWants) {
  for (const std::string fault :
       {"paper-out", "cover-open", "paper-near-end", "memory-near-full", "memory-full"}) {
    const VirtualPrinter printer({"--fault", fault});
    const Ran ran = run("zentaro doctor --json --device " + printer.device());
    EXPECT_EQ(ran.status, 1) << fault;
    EXPECT_TRUE(contains(ran.output, "\"finding\": \"" + fault + "\"")) << ran.output;
    EXPECT_FALSE(contains(ran.output, "unreadable")) << ran.output;
  }
}

TEST_F(Doctor, ShowsBytesThatAreNoAnswer) {
  const testing::Responder babbler([](std::string_view) { return "\x80\xE0\x1F"; });
  const Ran ran = run("zentaro doctor --timeout 1 --give-up 1 --device " + babbler.device());
  EXPECT_EQ(ran.status, 1);
  EXPECT_TRUE(contains(ran.output, "bytes come that are no answer: 80 E0 1F")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "-> another speed? The line runs at 9600 baud")) << ran.output;
}

// What others need to help: who ran it where, and the sales; nothing of customers.
TEST_F(Doctor, ReportsWhoRanItAndTheLastSales) {
  const VirtualPrinter printer;
  const std::string device = " --device " + printer.device();
  ::setenv("ZENTARO_BOOKS", file("books.db").c_str(), 1);
  till::Books books;
  till::Order order;
  order.id = "F-1";
  order.printer = "caja1";
  order.body = "Penalver";
  till::Outcome outcome;
  outcome.state = till::State::Printed;
  outcome.verdict = "printed";
  outcome.number = 1;
  books.finish(*books.open(order, {}), outcome);
  order.id = "F-2";
  books.finish(*books.open(order, {}), {});  // unknown
  EXPECT_TRUE(
      contains(run("zentaro doctor" + device).output, "whether the sale F-2 was printed is not known"));
  run("zentaro doctor --report " + file("report") + device);
  const std::string report = folder.read("report");
  for (const std::string& part :
       {std::string("zentaro 0."), run("date +%F").output.substr(0, 10), run("id -un").output.substr(0, 3),
        std::string("its serial number is ZPV0000001"), std::string("Last sales"),
        std::string("F-1  invoice  printed  printed  1\n")})
    EXPECT_TRUE(contains(report, part)) << part << " in " << report;
  EXPECT_FALSE(contains(report, "Penalver")) << report;
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
  write(
      "settings.ini",
      "\xEF\xBB\xBF[Config\\EPSONZT]\nTimeOut=30\nTimeOutZT=9\nLenDescripcionZT=0\nrubbish\n[Config] ; x\n"
      "[Config\\ModComm]\nCOM1=/dev/none\nCOM2=/dev/../dev/none\nCOM3=\nCOM4=\nCOM7 /dev/ttyUSB3\nDebugZT=1\n"
      "# remark\n; another\n");
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
  EXPECT_FALSE(contains(ran.output, "COM4: has the same device")) << ran.output;
  EXPECT_FALSE(contains(ran.output, "remark")) << ran.output;
  for (const std::string advice : {"TimeOutZT 30", "LenDescripcionZT 20", "COM7 /dev/ttyUSB3", "DebugZT 1"})
    EXPECT_TRUE(contains(ran.output, "-> zentaro settings set " + advice + "\n")) << advice << ran.output;
  EXPECT_TRUE(contains(ran.output, "this setting belongs in [Config\\EPSONZT]")) << ran.output;
}

}  // namespace zentaro::tools::doctor_test
