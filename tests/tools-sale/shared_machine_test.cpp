// Several programs at one printer, and another printer behind the name of the first.
#include <unistd.h>

#include "support/process.h"
#include "tools/connection/virtual_printer.h"

namespace zentaro::tools::shared_machine_test {

using testing::contains;
using testing::Ran;

class SharedMachine : public testing::Shell {
 protected:
  SharedMachine() { writeSale(); }
  std::string sale(const std::string& device, const std::string& rest) const {
    return "zentaro sale " + file("sale.json") + " --timeout 2 --device " + device + " " + rest;
  }
  /// Runs `first` in the background until it has said `begun`, then `meanwhile`; gives the end of `first`.
  Ran during(const std::string& first, const std::string& begun, const std::string& meanwhile) const {
    const std::string said = file("said");
    return run("rm -f " + said + "; (" + first + ") >" + said + " 2>&1 & p=$!; i=0; until grep -qs '" +
               begun + "' " + said + " || [ $i = 200 ]; do sleep 0.05; i=$((i+1)); done; " + meanwhile +
               "; wait $p; s=$?; cat " + said + "; exit $s");
  }
};

TEST_F(SharedMachine, NamesWhoHoldsAPortAndWaitsForIt) {
  const VirtualPrinter printer;
  const std::string device = " --device " + printer.device();
  const std::string status = "zentaro status" + device, out = file("out"), waited = file("waited");
  const Ran held =
      run("zentaro call Reset" + device + " & p=$!; sleep 1; " + status + " >" + out + " 2>&1; echo $? >>" +
          out + "; " + status + " --wait 30 >" + waited + " 2>&1; echo $? >>" + waited + "; wait $p");
  EXPECT_EQ(held.status, 0) << held.output;
  EXPECT_TRUE(contains(folder.read("out"), " is in use: zentaro (process ")) << folder.read("out");
  EXPECT_TRUE(folder.read("out").ends_with("\n2\n")) << folder.read("out");
  EXPECT_TRUE(contains(folder.read("waited"), "; waiting\n")) << folder.read("waited");
  EXPECT_TRUE(folder.read("waited").ends_with("\n0\n")) << folder.read("waited");
}

TEST_F(SharedMachine, LetsOneSaleAtATimePrintAndEachOnce) {
  const VirtualPrinter printer({"--fault", "wait=8 on subtotal"});
  const auto second = [&](const std::string& rest, const std::string& out) {
    return sale(printer.device(), rest) + " >" + file(out) + " 2>&1; echo $? >>" + file(out);
  };
  const Ran first = during(sale(printer.device(), "--id A"), "open invoice: ok",
                           second("--id A", "same") + "; " + second("--id B", "refused") + "; " +
                               second("--id C --wait 60", "waited"));
  EXPECT_EQ(first.status, 0) << first.output;
  EXPECT_TRUE(contains(folder.read("same"), "UNDER WAY. The sale \"A\"")) << folder.read("same");
  EXPECT_TRUE(folder.read("same").ends_with("\n3\n")) << folder.read("same");
  EXPECT_TRUE(contains(folder.read("refused"), "NOT PRINTED. Another program uses this printer now"))
      << folder.read("refused");
  EXPECT_TRUE(folder.read("refused").ends_with("\n3\n")) << folder.read("refused");
  EXPECT_TRUE(folder.read("waited").ends_with("\n0\n")) << folder.read("waited");
  EXPECT_TRUE(contains(folder.read("waited"), "Number 00000002")) << folder.read("waited");
}

// The cashier, the web server, root: books in a folder of their group, as the package makes it.
TEST_F(SharedMachine, KnowsWhatAnotherAccountHasPrinted) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can run programs as two other accounts";
  const VirtualPrinter printer;
  const std::string device = std::filesystem::canonical(printer.device());  // its folder is ours alone
  // The program, too, lies where those accounts may not look.
  EXPECT_EQ(
      run("cp $(command -v zentaro) " + file("") + "; chmod 755 " + file("") + "; chmod 666 " + device +
          "; mkdir " + file("books") + "; chgrp 60999 " + file("books") + "; chmod 2770 " + file("books"))
          .status,
      0);
  const auto as = [&](const char* account, const std::string& id) {
    const Ran ran = run("PATH=" + file("") +
                        ":$PATH HOME=/nonexistent XDG_STATE_HOME=/nonexistent setpriv --reuid=" + account +
                        " --regid=" + account + " --groups=60999 " + sale(device, "--id " + id));
    EXPECT_EQ(ran.status, 0) << account << id << ran.output;
    return ran.output;
  };
  for (const char* id : {"A", "B", "C"}) {
    EXPECT_TRUE(contains(as("60001", id), "\nPRINTED. ")) << id;
    EXPECT_TRUE(contains(as("60002", id), "ALREADY PRINTED. ")) << id;
    EXPECT_TRUE(contains(as("60002", id + std::string("2")), "\nPRINTED. ")) << id;
    EXPECT_TRUE(contains(as("60001", id + std::string("2")), "ALREADY PRINTED. ")) << id;
  }
}

// Two devices of the same kind change their names when they are plugged in again.
TEST_F(SharedMachine, SendsNothingToAnotherPrinterBehindTheSameName) {
  const VirtualPrinter one({"--fault", "lose-answer on close", "--serial", "ZPV0000001"});
  const VirtualPrinter other({"--serial", "ZPV0000002", "--log", file("log")});
  const std::string name = file("tty");
  std::filesystem::create_symlink(one.device(), name);
  const Ran ran =
      during(sale(name, "--give-up 8 --id A"), "close: ", "ln -sfn " + other.device() + " " + name);
  EXPECT_EQ(ran.status, 4) << ran.output;
  EXPECT_TRUE(contains(ran.output, "UNKNOWN. ")) << ran.output;
  EXPECT_FALSE(contains(folder.read("log"), "closing") || contains(folder.read("log"), "cancel"))
      << folder.read("log");
  const Ran back = run("ln -sfn " + one.device() + " " + name + "; " + sale(name, "--id A"));
  EXPECT_EQ(back.status, 0) << back.output;
  EXPECT_TRUE(contains(back.output, "ALREADY PRINTED. The sale \"A\"")) << back.output;
}

}  // namespace zentaro::tools::shared_machine_test
