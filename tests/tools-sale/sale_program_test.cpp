// `zentaro sale` against the virtual printer, with everything that can go wrong on the way.
#include <future>
#include <regex>

#include "common/json.h"
#include "common/virtual_printer.h"
#include "tools-call/program.h"

namespace zentaro::tools {
namespace {

using testing::contains;
using testing::Ran;

// The first block of JSON in the guide: the example there is what is printed here.
std::string guideExample() {
  std::ostringstream text;
  text << std::ifstream(std::string(ZENTARO_SOURCES) + "/docs/a-sale.md").rdbuf();
  std::smatch found;
  const std::string guide = text.str();
  EXPECT_TRUE(std::regex_search(guide, found, std::regex("```json\n([^`]*)```")));
  return found[1];
}

constexpr auto plainSale = R"({"document": "invoice",
  "lines": [{"description": "Arepa", "price": 10, "quantity": 2, "tax": 16},
            {"description": "Pan", "price": "1.10", "tax": 0}],
  "payments": [{"amount": 50}]})";

class SaleProgram : public testing::Shell {};

TEST_F(SaleProgram, PrintsTheExampleOfTheGuide) {
  write("sale.json", guideExample());
  const Ran ran = run("zentaro sale " + file("sale.json"));
  EXPECT_EQ(ran.status, 0) << ran.output;
  for (const char* line :
       {"   4/12  item Queso, 0.525 x 9.99, tax 8 %: ok\n", "   7/12  subtotal 34.52 (tax 4.28): ok\n",
        "  12/12  close: ok\n", "TOTAL                           Bs 34,52\n",
        "CAMBIO                           Bs 4,58\n", "Gracias por su compra\n",
        "\nPRINTED. The document is closed and counted."})
    EXPECT_TRUE(contains(ran.output, line)) << line << ran.output;
}

TEST_F(SaleProgram, PrintsACreditNote) {
  write("sale.json", R"({"document": "credit note", "customer": {"name": "Ana", "rif": "V1"},
    "invoice": {"number": 12, "serial": "ZPV1", "date": "2024-03-15", "time": "00:00"},
    "lines": [{"description": "Arepa", "price": 10, "tax": 16}]})");
  const Ran ran = run("zentaro sale " + file("sale.json"));
  EXPECT_EQ(ran.status, 0) << ran.output;
  EXPECT_TRUE(contains(ran.output, "NOTA DE CREDITO")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "15-03-2024")) << ran.output;
}

TEST_F(SaleProgram, SendsNothingOfAFileThatIsNotInOrder) {
  struct {
    const char* text;
    const char* said;
  } const rows[] = {
      {R"({"document": "invoice", "lines": [{"description": "A", "price": 1.005, "tax": 16}]})",
       "sale.json: lines[0].price: \"1.005\" has more than 2 decimals"},
      {R"({"document": "invoice", "lines": [{"description": "A", "price": 1, "tax": 16}]})",
       "sale.json: payments: are 0.00 together, but 1.16 are due"},
      {"", "sale.json: parse error at line 1, column 1"},
  };
  for (const auto& row : rows) {
    write("sale.json", row.text);
    const Ran ran = run("zentaro sale " + file("sale.json"));
    EXPECT_EQ(ran.status, 2) << ran.output;
    EXPECT_TRUE(contains(ran.output, row.said)) << ran.output;
    EXPECT_TRUE(contains(ran.output, "Nothing was sent to the printer.\n")) << ran.output;
    EXPECT_FALSE(contains(ran.output, "virtual printer")) << "none was started";
  }
  EXPECT_TRUE(contains(run("zentaro sale " + file("")).output, "Is a directory"));
  EXPECT_TRUE(contains(run("zentaro sale " + file("none")).output, "No such file"));
}

TEST_F(SaleProgram, LeavesADocumentOfSomebodyElseAlone) {
  const VirtualPrinter printer;
  const std::string device = " --device " + printer.device();
  write("sale.json", plainSale);
  ASSERT_EQ(run("zentaro call" + device + " IniciarFactura Ana").status, 0);
  const Ran ran = run("zentaro sale " + file("sale.json") + device);
  EXPECT_EQ(ran.status, 5) << ran.output;
  EXPECT_TRUE(contains(ran.output, "A document is open on the printer")) << ran.output;
  EXPECT_EQ(run("zentaro call" + device + " PasarLineaFactura Pan 1 1 0").status, 0) << "it is still open";
}

// The first signal lets the sale come to its end, the second one ends it at once; a reader that goes away does
// neither. Nothing of the virtual printer is left.
TEST_F(SaleProgram, EndsWellWhenItIsInterrupted) {
  write("sale.json", plainSale);
  std::filesystem::create_directory(file("tmp"));
  const std::string sale =
      "TMPDIR=" + file("tmp") + " zentaro sale " + file("sale.json") + " --fault 'delay=1.5 on item' ";
  const Ran once = run(sale + "& p=$!; sleep 0.7; kill $p; wait $p");
  EXPECT_EQ(once.status, 3) << once.output;
  EXPECT_TRUE(contains(once.output, "cancel the document: ok\n")) << once.output;
  EXPECT_TRUE(contains(once.output, "Cause: interrupted by a signal")) << once.output;
  const Ran twice = run(sale + "& p=$!; sleep 0.7; kill $p; sleep 0.1; kill -HUP $p; wait $p");
  EXPECT_EQ(twice.status, 4) << twice.output;
  EXPECT_TRUE(contains(twice.output, "the virtual printer is gone\n")) << twice.output;
  const Ran unread = run("exec 3>&1; { " + sale + " 2>&3; echo exit $? >&3; } | head -1");
  EXPECT_TRUE(contains(unread.output, "PRINTED. The document is closed and counted.\n")) << unread.output;
  EXPECT_TRUE(contains(unread.output, "exit 0\n")) << unread.output;
  EXPECT_TRUE(std::filesystem::is_empty(file("tmp")));
}

struct FaultRow {
  const char* plan;
  bool isSlow;  // the printer takes its time for every answer
  int status;
  const char* said;
  int invoicesCounted;
};

class SaleFault : public testing::Shell {
 protected:
  // The verdict is compared with the books of the printer.
  void check(const FaultRow& row, const std::string& name) const {
    std::vector<std::string> options{"--fault", row.plan, "--state", file(name)};
    if (row.isSlow) options.emplace_back("--realtime");
    const VirtualPrinter printer(options);
    const Ran ran = run("XDG_STATE_HOME=" + file(name) + ".d zentaro sale --timeout 1 --give-up 12 " +
                        file("sale.json") + " --device " + printer.device());
    EXPECT_EQ(ran.status, row.status) << row.plan << "\n" << ran.output;
    EXPECT_TRUE(contains(ran.output, row.said)) << row.plan << "\n" << ran.output;
    EXPECT_EQ(invoicesCounted(name), row.invoicesCounted) << row.plan;
  }

 private:
  // The file is written with the first change of the books.
  int invoicesCounted(const std::string& name) const {
    const std::string state = contents(file(name));
    return state.empty() ? 0 : Json::parse(state).at("day").at("invoices").get<int>();
  }
};

// All at once, because they do little but wait.
TEST_F(SaleFault, EndsAsThePrinterSaysItDid) {
  constexpr FaultRow rows[] = {
      {"lose-answer on close", false, 0, "close: no answer (TIEMPO AGOTADO)", 1},
      {"lose-answer on close", true, 0, "PRINTED. The document is closed and counted.\nNumber 00000001", 1},
      {"lose-command on close", true, 3, "cancel the document: ok", 0},
      {"power-cut=1 on close", true, 3, "NOT PRINTED.", 0},
      {"lose-answer on open", false, 3, "cancel the document: ok", 0},
      {"lose-command on item after 1", true, 3, "cancel the document: ok", 0},
      {"hang-up=1 on item", false, 3, "cancel the document: ok", 0},
      {"hang-up=1 on close", true, 3, "cancel the document: ok", 0},
      {"repeat-answer on payment", true, 3, "what came is no answer to it (SECUENCIA INVALIDA)", 0},
      {"bad-sequence on close", true, 0, "PRINTED.", 1},
      {"noise=inside on subtotal", true, 3, "CHECKSUM  INVALIDA", 0},
      {"lose-answer on payment times 2", true, 3, "cancel the document: no answer", 0},
      {"delay=0.3 always", false, 0, "PRINTED.", 1},
      {"delay=2.5 on payment", true, 3, "cancel the document: ok", 0},
      {"delay=2.5 on close", true, 0, "PRINTED.", 1},
      {"delay=6 on item", false, 3, "cancel the document: ok", 0},
      {"delay=6 on close", true, 0, "PRINTED.", 1},
      {"delay=2.5 on status", true, 0, "PRINTED.", 1},
      {"memory-full on open", true, 3, "NOT PRINTED. No document was opened.\n", 0},
      {"paper-out on item after 1", false, 4, "STILL OPEN. The document is not counted", 0},
      {"lose-answer on close;lose-answer on status after 2 always", true, 4, "UNKNOWN.", 1},
      {"lose-command always", false, 2, "the printer does not answer", 0},
  };
  write("sale.json", plainSale);
  std::vector<std::future<void>> running;
  for (const FaultRow& row : rows) {
    const std::string name = "state" + std::to_string(running.size()) + ".json";
    running.push_back(std::async(std::launch::async, [this, &row, name] { check(row, name); }));
  }
  for (auto& one : running) one.get();
}

}  // namespace
}  // namespace zentaro::tools
