// A sale in surroundings that would end another program: a limit on files, a terminal that goes.
#include "support/process.h"
#include "tools/connection/virtual_printer.h"

namespace zentaro::tools::limits_test {

using testing::contains;
using testing::Ran;

class SaleInNarrowPlaces : public testing::Shell {
 protected:
  SaleInNarrowPlaces() {
    write("sale.json", R"({"document": "invoice", "lines": [{"description": "Pan", "price": 1, "tax": 16},
        {"description": "Queso", "price": 1, "tax": 16}], "payments": [{"amount": 5}]})");
  }
};

// The trace outgrows the limit in the middle of the sale, whose end is written to a pipe.
TEST_F(SaleInNarrowPlaces, PrintsWhenAFileMayNotGrow) {
  const VirtualPrinter printer;
  const Ran ran = run("(ulimit -f 1; zentaro sale " + file("sale.json") + " --trace " + file("trace") +
                      " --device " + printer.device() + "; echo status $?) 2>&1 | cat");
  EXPECT_TRUE(contains(ran.output, "status 0\n")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "PRINTED")) << ran.output;
  EXPECT_TRUE(contains(printer.paper(), "CAMBIO")) << printer.paper();
}

// nohup: whoever started it has said that the end of the terminal is nothing to it.
TEST_F(SaleInNarrowPlaces, GoesOnWithoutItsTerminalWhenToldSo) {
  const VirtualPrinter printer({"--fault", "delay=1 on item", "--log", file("log")});
  const Ran ran = run("(trap '' HUP; exec zentaro sale " + file("sale.json") + " --device " +
                      printer.device() + ") & p=$!; until grep -qs item " + file("log") +
                      "; do sleep 0.05; done; kill -HUP $p; sleep 0.1; kill -HUP $p; wait $p");
  EXPECT_EQ(ran.status, 0) << ran.output;
  EXPECT_TRUE(contains(ran.output, "PRINTED")) << ran.output;
}

}  // namespace zentaro::tools::limits_test
