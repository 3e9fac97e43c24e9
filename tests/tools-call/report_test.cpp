// `zentaro status` and `zentaro cierre` against the virtual printer on a real pseudo-terminal.
#include "base/files/json.h"
#include "support/process.h"
#include "tools/connection/virtual_printer.h"
#include "tools/show/record_words.h"
#include "tools/status/status_words.h"
#include "zentaro.h"

namespace zentaro::tools::report_test {

using testing::contains;

class Reports : public testing::Shell {
 protected:
  VirtualPrinter printer;
  testing::Ran on(const std::string& command, const std::string& rest) {
    return run("zentaro " + command + " --device " + printer.device() + " " + rest);
  }
};

TEST_F(Reports, ShowTheFiguresOfTheDayAsTableAndAsJson) {
  for (const char* step :
       {"IniciarFactura", "PasarLineaFactura Pan 10 1 16", "RecibirPago 12", "CerrarComprobante"}) {
    ASSERT_EQ(on("call", step).status, 0) << step;
  }
  const testing::Ran table = on("cierre", "X");
  EXPECT_EQ(table.status, 0);
  EXPECT_TRUE(contains(table.output, "\n  BI 1                                  10.00\n") &&
              contains(table.output, "\nX PRINTED, sales 11.60, tax 1.60, returns 0.00.\n"))
      << table.output;
  EXPECT_EQ(run("zentaro sale --journal").output, "The books are empty.\n") << "an X changes nothing";
  const testing::Ran words = on("status", "");
  EXPECT_TRUE(
      contains(words.output, "Document     none open\nFiscal day   open; since Z 0: invoices 1, non-fiscal"))
      << words.output;
  EXPECT_TRUE(contains(words.output, "Paper        there is some\n"))
      << "bits of a virtual printer are known";
  const Json closing = Json::parse(on("cierre", "z --json").output);
  EXPECT_EQ(closing["verdict"], "printed");
  EXPECT_EQ(closing["number"], 1);
  const Json& figures = closing["ResultadoCierre"];
  EXPECT_EQ(figures["Impuesto1"], "1.6000");
  EXPECT_EQ(figures["numeroUltimaFactura"], 1);
  const Json status = Json::parse(on("status", "--json").output);
  EXPECT_EQ(status["statusN"]["UltimoCierreZ"], 1);
  EXPECT_EQ(status["statusHASAR"]["numeroUltimaFactura"], 1);
}

TEST_F(Reports, SayWhyThereIsNoRecord) {
  ASSERT_EQ(on("call", "IniciarFactura").status, 0);
  const testing::Ran refused = on("cierre", "z");
  EXPECT_EQ(refused.status, 1);
  for (const char* said : {"Z NOT PRINTED. The day is still open.\n", " CancelarComprobante\n",
                           "Cause: Z closing: ERROR 04 HAY UN DOCUMENTO ABIERTO\n"})
    EXPECT_TRUE(contains(refused.output, said)) << said << refused.output;
  EXPECT_NE(on("cierre", "y").status, 0);
  EXPECT_TRUE(contains(run("zentaro settings set COM3 " + printer.device() +
                           "; zentaro cierre z --port 3; zentaro sale --journal")
                           .output,
                       "  Z  COM3\n"))
      << "under the name that it was called by";
}

// A second Z would close an empty day and cannot be taken back.
TEST_F(Reports, JudgeAZWhoseAnswerWasLostByTheNumberOfTheLast) {
  struct {
    const char* name;
    std::string faults, status;
    const char* said;
  } const rows[] = {
      {"nothing more is heard", "lose-answer on closing always; lose-answer on status after 1 always", "4",
       "Z UNKNOWN. The day may be closed already."},
      {"it never arrived", "lose-command on closing", "3", "Z NOT PRINTED. The day is still open."},
      {"it arrived", "lose-answer on closing", "0", "Z 00000001 PRINTED; its figures did not arrive"},
  };
  for (const auto& row : rows) {
    const VirtualPrinter deaf({"--fault", row.faults});
    const testing::Ran lost = run("zentaro cierre z --timeout 1 --give-up 2 --device " + deaf.device());
    EXPECT_EQ(std::to_string(lost.status), row.status) << row.name << lost.output;
    EXPECT_TRUE(contains(lost.output, row.said)) << row.name << lost.output;
  }
  const VirtualPrinter noisy({"--fault", "bad-checksum on status always"});
  EXPECT_EQ(run("zentaro status --give-up 0 --device " + noisy.device()).status, 1) << "disturbed figures";
}

// Without known bits the counters alone tell that the day is open.
TEST(StatusWords, AreGivenForAPrinterOfWhichOnlyTheCountersAreKnown) {
  CZentaro printer;
  const auto numeric = std::make_shared<statusHASAR>();
  const auto words = [&](int invoices, int others, Bits bits) {
    auto normal = std::make_shared<statusN>();
    normal->LoadFromResponse(
        Array({56, u"0000", u"0000", u"0", u"0", u"0", u"240315", u"140500", std::to_string(invoices),
               std::to_string(others), u"7", u"1", u"1", u"1", u"0000"}));
    return statusInWords(Object(describe<statusN>(), normal), Object(describe<statusHASAR>(), numeric),
                         printer, bits);
  };
  EXPECT_TRUE(contains(words(0, 2, Bits::Unknown), "Fiscal day   open; since Z "))
      << words(0, 2, Bits::Unknown);
  EXPECT_TRUE(contains(words(0, 0, Bits::Unknown), "Fiscal day   no invoices since Z "));
  EXPECT_FALSE(contains(words(0, 0, Bits::Unknown), "Paper"));
  EXPECT_TRUE(contains(words(0, 0, Bits::Known), "Fiscal day   closed; last Z: "));
  for (const auto& [word, paper] : std::initializer_list<std::pair<std::int32_t, const char*>>{
           {0x0020, "there is none\n"},
           {0x0010, "near its end\n"},
           {0x0004, "there is some; the cover is open\n"},
           {0x0030, "there is none\n"}}) {
    printer.dwordPrinterStatus = word;
    EXPECT_TRUE(contains(words(0, 0, Bits::Known), std::string("Paper        ") + paper)) << paper;
  }
  for (const auto& [document, text] :
       std::initializer_list<std::pair<std::int32_t, const char*>>{{1, "an invoice is open"},
                                                                   {2, "a credit note is open"},
                                                                   {3, "a non-fiscal document is open"},
                                                                   {4, "a document is partially closed"},
                                                                   {7, "open (status 7)"}}) {
    numeric->statusDocumento = document;
    EXPECT_TRUE(contains(words(0, 0, Bits::Known), std::string("Document     ") + text + "\n")) << text;
  }
}

TEST(RecordWords, RoundNothingAway) {
  auto figures = std::make_shared<ResultadoCierre>();
  for (const auto& [amount, shown] : std::initializer_list<std::pair<const char*, const char*>>{
           {"1.2340", "1.2340"}, {"1.5000", "1.50"}, {"0", "0.00"}, {"12345.0001", "12345.0001"}}) {
    figures->VentasExentas = toCurrency(amount);
    for (const RecordRow& row : recordRows(Object(describe<ResultadoCierre>(), figures))) {
      if (row.member == "VentasExentas") {
        EXPECT_EQ(row.value, shown);
      }
    }
  }
}

// Nobody saw its verdict, so the same command again must not close an empty day.
TEST_F(Reports, TellAZThatWasCutShortInsteadOfMakingAnother) {
  const VirtualPrinter slow({"--fault", "delay=1.5 on closing", "--log", file("log")});
  const std::string closing = "zentaro cierre z --device " + slow.device();
  run(closing + " & p=$!; until grep -qs closing " + file("log") +
      "; do sleep 0.05; done; sleep 0.2; kill -9 $p; wait $p");
  const testing::Ran again = run(closing);
  EXPECT_EQ(again.status, 0) << again.output;
  EXPECT_TRUE(contains(again.output, "zentaro: the Z of ") &&
              contains(again.output, "\nZ ALREADY PRINTED as 00000001, at "))
      << again.output;
  const testing::Ran next = run(closing);
  EXPECT_TRUE(contains(next.output, "\nZ 00000002 PRINTED, ")) << next.output;
}

}  // namespace zentaro::tools::report_test
