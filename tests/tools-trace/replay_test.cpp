// A trace of calls on the virtual printer answers the same calls again.
#include "support/process.h"
#include "tools/connection/virtual_printer.h"

namespace zentaro::tools::replay_test {

using testing::contains;
using testing::Ran;

class Replay : public testing::Shell {};

// Commands begin at a random number, which the checksums show.
constexpr auto calls =
    "{ zentaro call --timeout 1 --device $DEVICE SerialImpresora;"
    "zentaro call --timeout 1 --device $DEVICE StatusIF N;"
    "zentaro call --timeout 1 --device $DEVICE RecibirPago 5;"
    "zentaro call --timeout 1 --device $DEVICE Subtotal; } | grep -v Checksum";

TEST_F(Replay, AnswersAsThePrinterDid) {
  const VirtualPrinter printer({"--fault", "lose-answer on subtotal"});
  write("settings.ini", "[Config\\EPSONZT]\nDebugZT=1\nDumpZT=" + file("trace.txt") + "\n");
  const Ran recorded = run("DEVICE=" + printer.device() + "; " + calls);
  write("settings.ini", "");
  const testing::Process replay({"zentaro", "trace", "--replay", file("trace.txt")});
  ASSERT_TRUE(testing::eventually([&] { return replay.output().ends_with('\n'); })) << replay.errors();
  const Ran again = run("DEVICE=" + replay.output() + calls);
  EXPECT_TRUE(contains(recorded.output, "ERROR 03 NO HAY DOCUMENTO ABIERTO")) << recorded.output;
  EXPECT_TRUE(contains(recorded.output, "Outcome         1 TIEMPO AGOTADO")) << recorded.output;
  EXPECT_EQ(again.output, recorded.output);
  EXPECT_EQ(replay.errors(),
            "38 status: answered; 6 left\n80 serial: answered; 5 left\n38 status: answered; 4 left\n"
            "38 status: answered; 3 left\n44 payment: answered; 2 left\n38 status: answered; 1 left\n"
            "43 subtotal: no answer, as in the trace; 0 left\n");
}

TEST_F(Replay, ReportsLinesThatCannotBeRead) {
  write("trace.txt", "Send 15-03-2024 14:05:09\nbroken\n");
  const Ran ran = run("zentaro trace " + file("trace.txt"));
  EXPECT_EQ(ran.status, 1);
  EXPECT_TRUE(contains(ran.output, "line 2 is neither a line with a time nor a dump\n")) << ran.output;
  EXPECT_EQ(run("echo broken | timeout 20 zentaro trace --replay -").status, 2) << "nothing to answer";
  EXPECT_EQ(run("zentaro trace " + file("none")).status, 2);
  EXPECT_EQ(run("printf '' | zentaro trace -").status, 0);
}

}  // namespace zentaro::tools::replay_test
