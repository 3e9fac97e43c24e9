// `zentaro sale` against the virtual printer, with everything that can go wrong on the way.
#include <filesystem>
#include <future>
#include <regex>

#include "base/files/json.h"
#include "support/tcp_printer.h"
#include "tools/connection/virtual_printer.h"

namespace zentaro::tools::sale_program_test {

using testing::contains;
using testing::Ran;

std::string guide(const std::string& name) { return testing::contents(ZENTARO_SOURCES "/docs/" + name); }

// The first block of JSON in a guide: the example there is what is printed here.
std::string exampleOf(const std::string& guide) {
  std::smatch found;
  EXPECT_TRUE(std::regex_search(guide, found, std::regex("```json\n([^`]*)```")));
  return found[1];
}

constexpr auto plainSale = R"({"document": "invoice",
  "lines": [{"description": "Arepa", "price": 10, "quantity": 2, "tax": 16},
            {"description": "Pan", "price": "1.10", "tax": 0}],
  "payments": [{"amount": 50}]})";

constexpr auto creditNote = R"({"document": "credit note", "invoice": {"number": 1},
  "lines": [{"description": "Arepa", "price": 10, "tax": 16}]})";

constexpr auto saleWithText =
    R"({"document": "invoice", "lines": [{"description": "Pan", "price": 1, "tax": 0}],
  "payments": [{"amount": 1}], "extraLines": ["Gracias"]})";

class SaleProgram : public testing::Shell {};

TEST_F(SaleProgram, PrintsTheExampleOfTheGuides) {
  write("sale.json", exampleOf(guide("a-sale.md")));
  const Ran ran = run("zentaro sale " + file("sale.json"));
  EXPECT_EQ(ran.status, 0) << ran.output;
  for (const char* line :
       {"   4/12  item Queso, 0.525 x 9.99, tax 8 %: ok\n", "   7/12  subtotal 34.52 (tax 4.28): ok\n",
        "  12/12  close: ok\n", "TOTAL                           Bs 34,52\n",
        "CAMBIO                           Bs 4,58\n", "Gracias por su compra\n",
        "\nPRINTED. The document is closed and counted.\nNumber 00000001, total 35.42, change 4.58\n"
        "ON THE VIRTUAL PRINTER: not a fiscal document\n"})
    EXPECT_TRUE(contains(ran.output, line)) << line << ran.output;
  write("venta.json", exampleOf(guide("es/una-venta.md")));
  const Ran spanish = run("ZENTARO_LANG=es zentaro sale --json " + file("venta.json") + " 2>/dev/null");
  EXPECT_EQ(
      Json::parse(spanish.output),
      Json::parse(R"({"verdict": "printed", "number": 1, "total": "35.42", "igtf": "0.90", "change": "4.58",
                            "cause": null, "next": "No lo imprima otra vez.", "virtual": true})"));
}

TEST_F(SaleProgram, PrintsACreditNote) {
  write("sale.json", R"({"document": "credit note", "customer": {"name": "Ana", "rif": "V1"},
    "invoice": {"number": 12, "serial": "ZPV1", "date": "2024-03-15", "time": "00:00"},
    "lines": [{"description": "Arepa", "price": 10, "tax": 16}]})");
  const Ran ran = run("zentaro sale " + file("sale.json"));
  EXPECT_EQ(ran.status, 0) << ran.output;
  EXPECT_TRUE(contains(ran.output, "warning: customer.rif: looks like no RIF")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "NOTA DE CREDITO")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "15-03-2024")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "FACTURA AFECTADA: 12\nSERIAL DEL EQUIPO: ZPV1\n")) << ran.output;
  EXPECT_TRUE(contains(ran.output, "HORA FACTURA: 00:00")) << ran.output;
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
      {R"({"document": "invoice", "lines": [{"description": "A", "price": 1, "tax": 16}], "total": 1,
          "payments": [{"amount": 2}]})",
       "sale.json: total: is 1.00, but 1.16 would be printed"},
      {"", "sale.json: parse error at line 1, column 1: there is nothing"},
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

// Money is never printed on another printer than the one that was meant.
TEST_F(SaleProgram, TakesNoVirtualPrinterForOneThatItCannotFind) {
  write("sale.json", plainSale);
  std::filesystem::create_symlink("loop", file("loop"));
  const std::string sale = "sale " + file("sale.json");
  const auto refused = [&](const char* settings, const std::string& words, const char* said) {
    const Ran ran = run("ZENTARO_SETTINGS=" + file(settings) + " zentaro " + words);
    EXPECT_EQ(ran.status, 2) << words << ran.output;
    EXPECT_TRUE(contains(ran.output, said)) << words << ran.output;
    EXPECT_FALSE(contains(ran.output, "ON THE VIRTUAL PRINTER")) << words << ran.output;
  };
  for (const std::string& words : {sale, sale + " --id F-1", std::string("cierre z"), std::string("status"),
                                   std::string("call Subtotal")})
    refused("loop", words, "cannot be read (Too many levels of symbolic links): let this account read them");
  for (const std::string& words : {sale + " --id F-1", std::string("cierre z"), std::string("cierre x")})
    refused("none", words, "say --virtual for the virtual one");
}

TEST_F(SaleProgram, ChecksPricesWithTaxAndTellsOfTheCentsBetween) {
  const auto sale = [](const char* prices) {
    return R"({"document": "invoice", "prices": ")" + std::string(prices) + R"(", "payments": [{"amount": 4}],
      "lines": [{"description": "A", "price": 1, "tax": 16}, {"description": "B", "price": 1, "tax": 16},
                {"description": "C", "price": 1, "tax": 16}]})";
  };
  write("sale.json", sale("with tax"));
  const Json checked = Json::parse(run("zentaro sale --check --json " + file("sale.json")).output);
  EXPECT_EQ(checked.at("problems"), Json::array());
  EXPECT_EQ(checked.at("total"), "2.99");
  EXPECT_EQ(checked.at("warnings").at(0).at("path"), "prices");
  const std::string told =
      "warning: prices: add up to 3.00 with tax, but 2.99 is printed (net 2.58, tax 0.41)\n";
  EXPECT_TRUE(contains(run("zentaro sale --check " + file("sale.json")).output, told));
  const Ran printed = run("zentaro sale " + file("sale.json"));
  EXPECT_TRUE(contains(printed.output, told)) << printed.output;
  EXPECT_TRUE(contains(printed.output, "PRINTED")) << printed.output;

  write("sale.json", sale("gross"));
  const Ran refused = run("zentaro sale --check --json " + file("sale.json"));
  EXPECT_EQ(refused.status, 2);
  EXPECT_EQ(Json::parse(refused.output).at("problems").at(0).at("path"), "prices") << refused.output;
  EXPECT_EQ(Json::parse(refused.output).at("total"), nullptr);
}

// A length that the library would raise for in the middle of the document is known before it; another is read as it does.
TEST_F(SaleProgram, ReadsTheLengthOfDescriptionsAsTheLibraryDoes) {
  const std::string longText = "123456789012345678901234567890";
  write("sale.json", R"({"document": "invoice", "lines": [{"description": ")" + longText + R"(", "price": 1,
      "tax": 0}, {"text": ")" +
                         longText + R"("}], "payments": [{"amount": 1}]})");
  const auto with = [&](const std::string& length) {
    write("settings.ini", "[Config\\EPSONZT]\nLenDescripcionZT=" + length + "\n");
    return run("zentaro sale --check " + file("sale.json"));
  };
  for (const char* wrong : {"-1", "32760"}) {
    EXPECT_TRUE(contains(with(wrong).output, "LenDescripcionZT: is " + std::string(wrong))) << wrong;
    const Ran refused = run("zentaro sale " + file("sale.json"));
    EXPECT_EQ(refused.status, 2) << refused.output;
    EXPECT_TRUE(contains(refused.output, "Nothing was sent")) << refused.output;
  }
  const Ran none = with("none");
  EXPECT_TRUE(contains(none.output, "lines[0].description: is cut to 20 characters")) << none.output;
  EXPECT_TRUE(contains(none.output, "lines[1].text: is cut to 14 characters")) << none.output;
  const std::string paper = run("zentaro sale " + file("sale.json")).output;
  EXPECT_TRUE(contains(paper, "\n12345678901234567890 (E)") && contains(paper, "\n12345678901234\n"))
      << paper;
  EXPECT_FALSE(contains(with("30 letters").output, "is cut to"))
      << "a number with something behind it is one";
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
  const std::string sale = "rm -f " + file("said") + "; TMPDIR=" + file("tmp") + " zentaro sale " +
                           file("sale.json") + " --fault 'delay=1.5 on item' ";
  // The label of a step stands there before its wait.
  const std::string begun = ">" + file("said") + " 2>&1 & p=$!; until grep -qs 'item Arepa' " + file("said") +
                            "; do sleep 0.05; done; kill $p; ";
  const std::string ended = "wait $p; s=$?; cat " + file("said") + "; exit $s";
  const Ran once = run(sale + begun + ended);
  EXPECT_EQ(once.status, 3) << once.output;
  EXPECT_TRUE(contains(once.output, "cancel the document: ok\n")) << once.output;
  EXPECT_TRUE(contains(once.output, "Cause: interrupted by a signal")) << once.output;
  const Ran twice = run(sale + begun + "sleep 0.1; kill -HUP $p; " + ended);
  EXPECT_EQ(twice.status, 4) << twice.output;
  EXPECT_TRUE(contains(twice.output, "the virtual printer is gone\n")) << twice.output;
  const Ran unread = run("exec 3>&1; { " + sale + " 2>&3; echo exit $? >&3; } | head -1");
  EXPECT_TRUE(contains(unread.output, "PRINTED. The document is closed and counted.\n")) << unread.output;
  EXPECT_TRUE(contains(unread.output, "exit 0\n")) << unread.output;
  EXPECT_TRUE(std::filesystem::is_empty(file("tmp")));
  const VirtualPrinter printer({"--fault", "delay=9 on closing", "--log", file("log")});
  const Ran closing =
      run("zentaro cierre z --device " + printer.device() + " & p=$!; until grep -qs closing " + file("log") +
          "; do sleep 0.05; done; kill $p; sleep 0.1; kill $p; wait $p");
  EXPECT_TRUE(closing.status == 4 && contains(closing.output, "may be printed: look")) << closing.output;
}

struct FaultRow {
  std::string plan;
  std::string end;  // "printed", "not printed", "still open" or "unknown", and what else the guide says
  const char* sale = plainSale;
};

// The table at the end of the guide, and what is too rare for it.
std::vector<FaultRow> faultRows() {
  std::vector<FaultRow> rows{{"hang-up=1 on close", "cancelled, not printed"},
                             {"lose-answer on payment times 2", "not printed"},
                             {"delay=0.3 always", "printed"},
                             {"delay=2.5 on status", "printed"},
                             {"lose-answer on close", "printed", creditNote},
                             {"lose-answer on text", "printed", saleWithText},
                             {"lose-answer on closing after 1;lose-answer on close", "printed"}};
  const std::string table = guide("a-sale.md");
  const std::regex row("\\| `([^`]*)` \\| [^|`]+ \\| ([^|]*) \\|\n");
  for (std::sregex_iterator found(table.begin(), table.end(), row), end; found != end; ++found)
    rows.push_back({(*found)[1], (*found)[2]});
  return rows;
}

std::vector<std::string> with(std::vector<std::string> options, const std::string& option) {
  options.push_back(option);
  return options;
}

class SaleFault : public testing::Shell {
 protected:
  // The verdict is compared with the books of the printer.
  void check(const FaultRow& row, const std::string& printerOption, const std::string& name) const {
    write(name + ".sale", row.sale);
    std::optional<VirtualPrinter> printer;
    std::optional<testing::TcpPrinter> distant;
    const std::vector<std::string> options{"--fault", row.plan, "--state", file(name)};
    if (printerOption == "--tcp")
      distant.emplace(options);
    else
      printer.emplace(with(options, printerOption));
    const Ran ran =
        run("ZENTARO_BOOKS=" + file(name) + ".d/books.db zentaro sale --timeout 2 --give-up 10 " +
            file(name + ".sale") + " --device " + (printer ? printer->device() : distant->device()));
    const bool isPrinted = row.end == "printed", isUnknown = contains(row.end, "unknown");
    const int status = isPrinted ? 0 : contains(row.end, "not printed") ? 3 : 4;
    EXPECT_EQ(ran.status, status) << row.plan << printerOption << ran.output;
    EXPECT_EQ(contains(ran.output, "UNKNOWN. "), isUnknown) << row.plan << printerOption << ran.output;
    EXPECT_EQ(contains(ran.output, "cancel the document: ok"), contains(row.end, "cancelled"))
        << row.plan << ran.output;
    EXPECT_EQ(documentsCounted(name), isPrinted || isUnknown ? 1 : 0) << row.plan << printerOption;
  }

 private:
  // The file is written with the first change of the books.
  int documentsCounted(const std::string& name) const {
    const std::string state = folder.read(name);
    if (state.empty()) return 0;
    const Json day = Json::parse(state).at("day");
    return day.at("invoices").get<int>() + day.at("creditNotes").get<int>();
  }
};

// All at once, because they do little but wait; on a printer that answers at once, on one that
// takes its time, and over TCP.
TEST_F(SaleFault, EndsAsTheGuideSaysAndAsThePrinterCountedIt) {
  const std::vector<FaultRow> rows = faultRows();
  EXPECT_GT(rows.size(), 15U) << "the table of the guide was not found";
  std::vector<std::future<void>> running;
  for (const FaultRow& row : rows) {
    for (const char* option : {"--quiet", "--realtime", "--tcp"}) {
      const std::string name = "state" + std::to_string(running.size()) + ".json";
      running.push_back(std::async(std::launch::async, [=, this, &row] { check(row, option, name); }));
    }
  }
  for (auto& one : running) one.get();
}

}  // namespace zentaro::tools::sale_program_test
