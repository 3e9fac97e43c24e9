// The program itself, as its own process on a real pseudo-terminal: start and end, kills, the line, the
// control channels. Every wait has a bound.
#include "virtual-printer/program.h"

#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/un.h>

#include "tools/printer/tell.h"

namespace virtual_printer::program_test {

using namespace program;
using zentaro::tools::tell;

Descriptor connected(const std::string& path) {
  Descriptor client{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  sockaddr_un address{AF_UNIX, {}};
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  EXPECT_EQ(::connect(client.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  return client;
}

std::string tellOn(const Descriptor& client) {
  ::send(client.get(), "status\n", 7, MSG_NOSIGNAL);
  return readFor(client.get(), [](const std::string& text) { return text.ends_with('\n'); });
}

TEST(Program, ASignalEndsItCleanly) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const Scratch scratch;
    Printer printer{with(scratch, {"--control", scratch / "control", "--rif", "J-1"})};
    ASSERT_TRUE(printer.isReady());
    EXPECT_EQ(printer.errors(), "ready: " + (scratch / "port").string() + "\n");
    EXPECT_EQ(printer.end(signal), 0);
    EXPECT_FALSE(std::filesystem::is_symlink(scratch / "port"));
    EXPECT_FALSE(std::filesystem::exists(scratch / "control"));
  }
}

TEST(Program, WhatWasIgnoredAtTheStartStaysIgnored) {
  const Scratch scratch;
  const std::string port = scratch / "port";
  Process printer{{"sh", "-c", "trap '' HUP; exec zentaro-printer --quiet --link " + port}};
  ASSERT_TRUE(printer.says("ready: "));
  ::kill(printer.id(), SIGHUP);
  EXPECT_EQ(Port{port}.say("80"), "ZPV0000001");
  EXPECT_EQ(printer.end(SIGTERM), 0);
}

TEST(Program, MistakesOnTheCommandLineEndItBeforeAnythingStarts) {
  const Scratch scratch;
  scratch.write("file", "precious");
  const std::string precious = scratch / "file";
  const std::string fifo = scratch / "fifo";
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  const struct {
    std::vector<std::string> options;
    const char* complaint;
  } rows[] = {
      {{"--fault", "explode"}, "there is no effect \"explode\""},
      {{"--frobnicate"}, "--frobnicate"},
      {{"--fault", "delay=1", "wait=1"}, "wait=1"},
      {{"--serial", "a b"}, "capital letters and digits"},
      {{"--serial", std::string(21, 'A')}, "is 1 to 20 capital letters"},
      {{"--igtf", "100"}, "--igtf: a percentage from 0 to 99.99"},
      {{"--lang", "es", "--frobnicate"}, "sobra este argumento: --frobnicate"},
      {{"--lang=es", "--seed"}, "--seed: falta N"},
      {{"--lang=es", "--fault", "delay=1=\x1B[2J"}, "se espera un solo valor detrás de \"delay\""},
      {{"--paper", "x.pdf"}, "must end in .txt, .svg or .html"},
      {{"--link", precious}, "there is a file"},
      {{"--state", precious}, "it is not JSON"},
      {{"--control", precious}, "there is a file"},
      {{"--web", "x"}, "--web x: a port from 0 to 65535"},
      {{"--open"}, "--open requires --web"},
      {{"--log", "/"}, "--log: / is no file"},
      {{"--log", fifo}, "fifo is no file"},
      {{"--state", fifo}, "fifo is no file"},
      {{"--state", "/dev/zero"}, "/dev/zero is no file"},
      {{"--tcp", "1", "--link", precious}, "--link excludes --tcp"},
      {{"--temporary", "--link", precious}, "--link excludes --temporary"},
      {{"--tcp", "[::1]:70000"}, "--tcp [::1]:70000: a port from 0 to 65535"},
      {{"--tcp", "192.0.2.1:0"}, "--tcp 192.0.2.1:0: Cannot assign"},
      {{"--clock", "2026-02-30T10:00"}, "--clock: a time like"},
      {{"--clock", "1999-12-31T10:00"}, "--clock: a time like"},
      {{"--clock", "2026-01-31T10:00:00x"}, "--clock: a time like"},
  };
  for (const auto& row : rows) {
    Printer printer{row.options};
    EXPECT_GT(printer.end(), 0) << row.complaint;
    EXPECT_TRUE(contains(printer.errors(), row.complaint)) << printer.errors();
    EXPECT_FALSE(contains(printer.errors(), "ready"));
  }
  EXPECT_EQ(scratch.read("file"), "precious");
}

TEST(Program, AKillLosesAtMostTheOpenDocument) {
  const Scratch scratch;
  {
    Printer printer{with(scratch)};
    ASSERT_TRUE(printer.isReady());
    Port port{scratch / "port"};
    port.say("40 ||||||||");
    port.say("42 a|1000|100|0|M");
    port.say("44 |100|T");
    EXPECT_EQ(port.say("45 T"), "00000001|100|0");
    port.say("40 ||||||||");
    port.say("42 b|1000|100|0|M");
    EXPECT_EQ(printer.end(SIGKILL), -SIGKILL);
  }
  Printer printer{with(scratch)};
  ASSERT_TRUE(printer.isReady()) << "the link that the killed printer left behind is replaced";
  EXPECT_TRUE(contains(printer.output(), "FACTURA:                        00000002"));
  EXPECT_TRUE(contains(printer.output(), "DOCUMENTO ANULADO"));
  Port port{scratch / "port"};
  EXPECT_EQ(port.say("38 *"), "0|0|2|0|0|0");
  EXPECT_EQ(port.say("39 X|S").substr(0, 5), "1.00|");
  EXPECT_EQ(port.say("40 ||||||||"), "00000003");
}

TEST(Program, ACloseThatCannotBeSavedIsRefusedAndTold) {
  const Scratch scratch;
  Printer printer{with(scratch, {"--log", scratch / "log"})};
  ASSERT_TRUE(printer.isReady());
  Port port{scratch / "port"};
  port.say("48");
  std::filesystem::remove(scratch / "state.json");
  std::filesystem::create_directory(scratch / "state.json");
  EXPECT_EQ(port.say("4A"), "ERROR 25 MEMORIA FISCAL NO SE PUEDE GRABAR");
  EXPECT_TRUE(contains(printer.errors(), "zentaro-printer: --state: ")) << printer.errors();
  EXPECT_TRUE(contains(scratch.read("log"), "\"event\":\"unsaved\""));
  std::filesystem::remove(scratch / "state.json");
  EXPECT_EQ(port.say("4A"), "00000001");
}

TEST(Program, ControlClientsCannotUseUpTheDescriptors) {
  const Scratch scratch;
  Printer printer{with(scratch, {"--control", scratch / "control"})};
  ASSERT_TRUE(printer.isReady());
  const rlimit few{24, 24};
  ASSERT_EQ(::prlimit(printer.id(), RLIMIT_NOFILE, &few, nullptr), 0);
  std::vector<Descriptor> clients;
  bool isRefused = false;
  while (!isRefused && clients.size() < 30) {
    clients.push_back(connected(scratch / "control"));
    isRefused = !tellOn(clients.back()).starts_with("ok");
  }
  EXPECT_TRUE(isRefused);
  Port port{scratch / "port"};
  EXPECT_EQ(port.say("48"), "00000001") << "the state file can still be written";
  clients.clear();
  EXPECT_TRUE(eventually([&] { return tellOn(connected(scratch / "control")).starts_with("ok"); }));
}

TEST(Program, NobodyNeedsToReadWhatItSays) {
  const Scratch scratch;
  const std::string pipe = scratch / "pipe", port = scratch / "port";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const Descriptor reader{::open(pipe.c_str(), O_RDWR | O_CLOEXEC)};
  Process printer{
      {"sh", "-c", "exec zentaro-printer --link " + port + " --fault 'delay=0 always' >" + pipe + " 2>&1"}};
  ASSERT_TRUE(eventually([&] { return std::filesystem::is_symlink(port); }));
  Port host{port};
  EXPECT_EQ(host.say("48"), "00000001");
  for (int line = 0; line < 1500; ++line) ASSERT_EQ(host.say("49 " + std::string(40, 'x')), "") << line;
  printer.type("status\n");
  EXPECT_EQ(host.say("4A"), "00000001") << "far more has been said than a pipe holds";
  EXPECT_EQ(printer.end(SIGTERM), 0);
}

TEST(Program, AKillAtAnyMomentLeavesAStateFileThatCanBeRead) {
  const Scratch scratch;
  int last = 0;
  for (int round = 0; round < 12; ++round) {
    Printer printer{with(scratch, {"--quiet"})};
    ASSERT_TRUE(printer.isReady()) << printer.errors();
    Port port{scratch / "port"};
    const std::string number = port.say("48");
    EXPECT_GT(std::stoi(number), last) << "no number is given twice";
    last = std::stoi(number);
    port.say("4A");
    // Two dozen commands on their way, and the kill somewhere among them.
    std::string flood;
    for (int pair = 0; pair < 12; ++pair) flood += commandFrame('"', "48") + commandFrame('"', "4A");
    EXPECT_GT(::write(port.get(), flood.data(), flood.size()), 0);
    readFor(port.get(),
            [&](const std::string& text) { return text.size() >= static_cast<std::size_t>(round) * 20 + 1; });
    EXPECT_EQ(printer.end(SIGKILL), -SIGKILL);
  }
  for (const auto& entry : std::filesystem::directory_iterator{scratch / ""}) {
    const std::string name = entry.path().filename();
    EXPECT_TRUE(name == "port" || name.starts_with("state.json")) << name;
    EXPECT_TRUE(name == "port" || contains("state.json.lock state.json.new", name))
        << "one is left at most: " << name;
  }
}

TEST(Program, TheLineOutlivesItsHosts) {
  const Scratch scratch;
  Printer printer{with(scratch)};
  ASSERT_TRUE(printer.isReady());
  for (int host = 0; host < 3; ++host) EXPECT_EQ(Port{scratch / "port"}.say("80"), "ZPV0000001");
  {
    Port crashed{scratch / "port"};
    ASSERT_EQ(::ioctl(crashed.get(), TIOCEXCL), 0);
  }
  EXPECT_TRUE(eventually([&] {
    const Port next{scratch / "port"};
    int isExclusive = 1;
    return next.isOpen() && ::ioctl(next.get(), TIOCGEXCL, &isExclusive) == 0 && isExclusive == 0 &&
           ::flock(next.get(), LOCK_EX | LOCK_NB) == 0;
  })) << "the mark of the crashed host is lifted, and the lock free";
}

TEST(Program, TheLineOverTcpServesOneHostAtATime) {
  const Scratch scratch;
  Printer printer{{"--tcp", "0", "--temporary", "--clock", "2026-01-31T10:00"}};
  ASSERT_TRUE(printer.isReady()) << printer.errors();
  const std::string said = printer.errors(), paper = said.substr(7, said.find('\n') - 7);
  ASSERT_TRUE(contains(said, "\nready: 127.0.0.1:") && std::filesystem::exists(paper)) << said;
  const int number = std::stoi(said.substr(said.find("0.1:") + 4));
  {
    Port first{number};
    EXPECT_EQ(first.say("59"), "260131|100000");
    Port second{number};
    char byte = 0;
    EXPECT_EQ(::read(second.get(), &byte, 1), 0) << "refused";
    EXPECT_EQ(first.say("80"), "ZPV0000001");
  }
  EXPECT_TRUE(contains(printer.errors(), "refused: 127.0.0.1:"));
  EXPECT_EQ(Port{number}.say("59"), "260131|100000") << "the clock stands still";
  EXPECT_EQ(printer.end(SIGTERM), 0);
  EXPECT_FALSE(std::filesystem::exists(paper));
}

TEST(Program, AHostThatHoldsTheLockKeepsThePort) {
  const Scratch scratch;
  Printer printer{with(scratch)};
  ASSERT_TRUE(printer.isReady());
  const Port host{scratch / "port"};
  ASSERT_EQ(::flock(host.get(), LOCK_EX | LOCK_NB), 0);
  ASSERT_EQ(::ioctl(host.get(), TIOCEXCL), 0);
  std::this_thread::sleep_for(2500ms);  // longer than two looks at the idle line
  int isExclusive = 0;
  ASSERT_EQ(::ioctl(host.get(), TIOCGEXCL, &isExclusive), 0);
  EXPECT_NE(isExclusive, 0);
}

TEST(Program, AfterAHangUpTheLinkLeadsToANewDevice) {
  const Scratch scratch;
  Printer printer{with(scratch, {"--fault", "hang-up=0.1 on serial"})};
  ASSERT_TRUE(printer.isReady());
  const std::filesystem::path before = std::filesystem::read_symlink(scratch / "port");
  Port port{scratch / "port"};
  EXPECT_EQ(port.say("59").size(), 13U);
  EXPECT_EQ(port.say("80"), "no answer");
  EXPECT_TRUE(eventually([&] { return split(printer.errors(), '\n').size() == 4; })) << printer.errors();
  EXPECT_EQ(Port{scratch / "port"}.say("80"), "ZPV0000001");
}

TEST(Program, ALineThatCannotBeHadAfterAHangUpIsHadLater) {
  const Scratch scratch;
  Printer printer{with(scratch, {"--fault", "hang-up=0.1 on serial"})};
  ASSERT_TRUE(printer.isReady());
  Port port{scratch / "port"};
  const auto allow = [&](rlim_t descriptors) {
    const rlimit limit{descriptors, 1024};
    return ::prlimit(printer.id(), RLIMIT_NOFILE, &limit, nullptr);
  };
  ASSERT_EQ(allow(3), 0);
  EXPECT_EQ(port.say("80"), "no answer");
  ASSERT_TRUE(printer.says("Too many open files")) << printer.errors();
  ASSERT_EQ(allow(1024), 0);
  ASSERT_TRUE(eventually([&] { return occurrences(printer.errors(), "ready: ") == 2; })) << printer.errors();
  EXPECT_EQ(Port{scratch / "port"}.say("80"), "ZPV0000001");
}

TEST(Program, FaultsAreSwitchedOnBothControlChannels) {
  const Scratch scratch;
  Printer printer{with(scratch, {"--control", scratch / "control", "--log", scratch / "log"})};
  ASSERT_TRUE(printer.isReady());
  Port port{scratch / "port"};
  printer.type("fault paper-out\n");
  ASSERT_TRUE(eventually([&] { return printer.errors().ends_with("\nok\n"); }));
  EXPECT_EQ(port.say("48"), "ERROR 20 SIN PAPEL");
  EXPECT_EQ(tell(scratch / "control", "faults"), "paper-out always (in force)\nok\n");
  EXPECT_EQ(tell(scratch / "control", "clear"), "ok all faults cleared\n");
  EXPECT_EQ(port.say("48"), "00000001");
  const std::string log = scratch.read("log");
  EXPECT_TRUE(contains(log, "\"event\":\"fault\",\"name\":\"paper-out always\"")) << log;
  EXPECT_EQ(split(log, '\n').size(), 6U) << "two commands, two answers, one fault";
  printer.type("quit\n");
  EXPECT_EQ(printer.end(), 0);
}

}  // namespace virtual_printer::program_test
