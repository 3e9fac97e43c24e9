// `zentaro sale` against the virtual printer, with everything that can go wrong on the way.
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

struct FaultRow {
  const char* name;
  const char* plan;
  int status;
  const char* said;
  int invoicesCounted;
};

void PrintTo(const FaultRow& row, std::ostream* out) { *out << row.plan; }

class SaleFault : public testing::Shell, public ::testing::WithParamInterface<FaultRow> {
 protected:
  // The file is written with the first change of the books.
  int invoicesCounted() const {
    const std::string state = contents(file("state.json"));
    return state.empty() ? 0 : Json::parse(state).at("day").at("invoices").get<int>();
  }
};

// The verdict is compared with the books of the printer.
TEST_P(SaleFault, EndsAsThePrinterSaysItDid) {
  const FaultRow& row = GetParam();
  const VirtualPrinter printer({"--fault", row.plan, "--state", file("state.json")});
  write("sale.json", plainSale);
  const Ran ran = run("zentaro sale --timeout 1 " + file("sale.json") + " --device " + printer.device());
  EXPECT_EQ(ran.status, row.status) << ran.output;
  EXPECT_TRUE(contains(ran.output, row.said)) << ran.output;
  EXPECT_EQ(invoicesCounted(), row.invoicesCounted);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, SaleFault,
    ::testing::Values(
        FaultRow{"CloseAnswerLost", "lose-answer on close", 0, "close: answer lost, TIEMPO AGOTADO", 1},
        FaultRow{"CloseLost", "lose-command on close", 3, "cancel the document: ok", 0},
        FaultRow{"PowerCutAtTheClose", "power-cut=1 on close", 3, "NOT PRINTED.", 0},
        FaultRow{"OpenAnswerLost", "lose-answer on open", 3, "cancel the document: ok", 0},
        FaultRow{"ItemLost", "lose-command on item after 1", 3, "cancel the document: ok", 0},
        FaultRow{"CableOut", "hang-up=1 on item", 3, "cancel the document: ok", 0},
        FaultRow{"OldAnswer", "repeat-answer on payment", 3, "SECUENCIA INVALIDA", 0},
        FaultRow{"NoiseInTheSubtotal", "noise=inside on subtotal", 3, "CHECKSUM  INVALIDA", 0},
        FaultRow{"CancelAnswerLost", "lose-answer on payment times 2", 3, "cancel the document: answer lost",
                 0},
        FaultRow{"OpenRefused", "memory-full on open", 3, "open invoice: ERROR 22 MEMORIA FISCAL LLENA", 0},
        FaultRow{"PaperOut", "paper-out on item after 1", 4, "STILL OPEN. The document is not counted", 0},
        FaultRow{"Silence", "lose-answer on close;lose-answer on status after 1 always", 4, "UNKNOWN.", 1},
        FaultRow{"SilenceFromTheStart", "lose-command always", 3, "does not give its counters", 0}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace zentaro::tools
