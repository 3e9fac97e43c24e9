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

// The books are what may not grow here: whoever named the sale is not sold twice, and nobody is left without a word.
TEST_F(SaleInNarrowPlaces, EndsWithAWordWhenAFileMayNotGrow) {
  ::setenv("ZENTARO_BOOKS", file("books.db").c_str(), 1);
  const VirtualPrinter printer;
  const auto sell = [&](const std::string& words) {
    return run("(ulimit -f 1; zentaro sale " + file("sale.json") + " --device " + printer.device() + words +
               "; echo status $?) 2>&1 | cat")
        .output;
  };
  const std::string named = sell(" --id F-1");
  EXPECT_TRUE(contains(named, "status 2\n")) << named;
  EXPECT_EQ(printer.paper(), "");
  const std::string unnamed = sell("");
  EXPECT_TRUE(contains(unnamed, "status 0\n") && contains(unnamed, "the books miss this sale")) << unnamed;
  EXPECT_TRUE(contains(printer.paper(), "CAMBIO")) << printer.paper();
  ::unsetenv("ZENTARO_BOOKS");
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
