// Invoices and credit notes as a till lives them: what is accepted, what is refused, and the sums on the way.
#include "bench.h"

namespace virtual_printer::sale_test {

using bench::Till;

constexpr const char* openInvoice = "40 Juan|V12345678|||||||";
constexpr const char* openCreditNote = "40 Juan|V12345678|1|ZPV0000007|261124|150400|D||";

TEST(Sale, AnInvoiceFromOpeningToChange) {
  Till till;
  till.dialogue(R"(
    40 Juan|V12345678||||||| => 00000001
    42 Cafe molido|2000|1250|1600|M => 2900
    42 Queso|525|999|0|M => 3424
    42 Pan|1000|999|800|M => 4503
    42 Lujo|1000|999|3100|M => 5812
    41 lote 4711|S =>
    43 | => 5812|5022|790|0|4
    44 Cliente fiel|500|D => 5233|0
    44 |3000|T => 2233|0
    44 2|3000|T => 0|767
    43 | => 5233|4522|711|6000|4
    45 U|2000 => 00000001|5293|707
    40 |||||||| => 00000002)");
}

TEST(Sale, ACreditNoteHasItsOwnNumbersAndNoPayments) {
  Till till;
  till.dialogue(R"(
    40 Juan|V1||||||| => 00000001
    42 Cafe|1000|100|1600|M => 116
    44 |116|T => 0|0
    45 T => 00000001|116|0
    40 Juan|V1|1|ZPV0000007|261124|150400|D|| => 00000001
    42 Cafe|1000|100|1600|M => !05
    42 Cafe|1000|100|1600|m => 116
    44 |116|T => !13
    45 T => 00000001|116|0
    40 |||||||| => 00000002
    42 Cafe|1000|100|1600|m => !05)");
}

// Each row: where the document stands, and what is refused there. The till checks that nothing changed.
TEST(Sale, RefusesWhatIsOutOfOrder) {
  const std::string item = "\n42 Cafe|1000|100|1600|M => 116\n";
  const std::string nothingOpen;
  const std::string open = openInvoice;
  const std::string withItem = open + item;
  const std::string paying = withItem + "44 |50|T => 66|0\n";
  const std::string paid = withItem + "44 |200|T => 0|84\n";
  const std::string partial = paid + "45 A => 00000001|116|84\n";
  const std::string nonFiscal = "48 => 00000001\n";
  const struct {
    const char* name;
    std::string before;
    const char* refused;
  } rows[] = {
      {"nothing open", nothingOpen,
       "41 x|S; 42 Cafe|1000|100|1600|M; 43 |; 44 |100|T; 44 |100|D; 44 |0|C; 45 T; 49 x; 4A => !03"},
      {"an invoice without items", open, R"(
          40 ||||||||; 48; 49 x; 4A; 4B; 39 Z; 39 X|S; 3A 00000001|00000009|; 58 260101|120000; 5D 1|x => !04
          44 |100|T; 44 |100|D; 45 T => !12)"},
      {"an invoice with an item", withItem, R"(
          44 |0|T; 44 |-5|T; 44 |0|D; 45 U|-1 => !06
          44 |101|D => !08
          44 |100|X; 44 ||T; 44 |1O0|T => !02
          45 T; 45 A => !11
          45 t; 45 X => !14
          45 U; 45 U|0; 45 T|100; 45 U|117 => !15)"},
      {"payment begun", paying, R"(
          42 Cafe|1000|100|1600|M; 44 |10|D => !09
          45 T; 45 B|50 => !11)"},
      {"paid", paid, "44 |1|T => !10\n40 |||||||| => !04"},
      {"partially closed", partial, R"(
          42 Cafe|1000|100|1600|M; 43 |; 44 |1|T; 44 |0|C; 45 T; 45 A => !16
          45 E|100 => !15
          40 |||||||| => !04)"},
      {"a non-fiscal document", nonFiscal,
       "40 ||||||||; 41 x|S; 42 Cafe|1000|100|1600|M; 43 |; 45 T; 39 Z => !04"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Till till;
    till.dialogue(row.before);
    till.dialogue(row.refused);
  }
}

TEST(Sale, RefusesItemsThatAreMalformedOrTooLarge) {
  Till till;
  till.dialogue(std::string{openInvoice} + R"(
    42 Cafe|0|100|1600|M; 42 Cafe|-1000|100|1600|M; 42 Cafe|1000|-100|1600|M; 42 Cafe|1000000000|100|1600|M => !06
    42 Cafe|1000|1000000000000|1600|M; 42 Cafe|1000|100|10000|M; 42 Cafe|1000|100|4294968896|M => !06
    42 Cafe|999999999|999999999999|0|M => !06
    42 Cafe|1.5|100|1600|M; 42 Cafe|1000||1600|M; 42 Cafe|1000|100; 42 Cafe|1000|100|1600|X; 42 => !02
    42 Cafe|12345678901234567890|100|1600|M => !02
    42 Regalo|1000|0|1600|M => 0
    45 T => 00000001|0|0)");
}

TEST(Sale, ADiscountMayTakeAll) {
  Till till;
  till.dialogue(std::string{openInvoice} +
                "\n42 Cafe|1000|100|1600|M => 116\n44 |100|D => 0|0\n45 T => 00000001|0|0");
  EXPECT_TRUE(bench::contains(till.paper(), "BI G (16,00%)")) << "also of nothing";
  till.dialogue("40 ||||||||\n42 Pan|1000|30|0|M\n44 |5|D\n44 |25|T\n45 T => 00000002|25|0");
  EXPECT_EQ(till.lastSaved.day.discounts, 105) << "of all invoices of the day";
}

TEST(Sale, ThreeRatesADayAndTheFourthIsRefusedUntilTheClosing) {
  Till till;
  till.dialogue(R"(
    40 |||||||| => 00000001
    42 a|1000|100|1600|M => 116
    44 |116|T => 0|0
    45 T => 00000001|116|0
    40 |||||||| => 00000002
    42 b|1000|100|900|M => 109
    42 c|1000|100|500|M => 214
    42 d|1000|100|700|M => !07
    42 e|1000|100|0|M => 314
    44 |0|C => 00000002
    40 |||||||| => 00000003
    42 d|1000|100|700|M => 107
    42 f|1000|100|1200|M => 219
    42 b|1000|100|900|M => !07
    44 |0|C => 00000003)");
  till.say("39 Z");
  till.dialogue(R"(
    40 |||||||| => 00000004
    42 b|1000|100|900|M => 109)");
}

TEST(Sale, IgtfIsDueOnTopOfTheTotal) {
  const struct {
    const char* name;
    const char* rows;
  } cases[] = {
      {"half a cent up", "44 |11700|T => 0|100\n 45 U|50 => 00000001|11602|98"},  // 1.5 becomes 2
      {"the whole total", "44 |11948|T => 0|348\n 45 U|11600 => 00000001|11948|0"},
      {"a cent short",
       "44 |11947|T => 0|347\n 45 U|11600 => !11\n 44 |1|T => 0|348\n 45 U|11600 => 00000001|11948|0"},
      {"nothing more can be due", "44 |11948|T => 0|348\n 44 |1|T => !10"},
      {"definitive at once", "44 |11700|T => 0|100\n 45 E|50 => 00000001|11602|98"},
      {"empty type with a base", "44 |11700|T => 0|100\n 45 |50 => 00000001|11602|98"},
      {"partial with a base",
       "44 |11700|T => 0|100\n 45 B|50 => 00000001|11602|98\n 41 x|S =>\n 45 E => 00000001|11602|98"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    Till till;
    till.dialogue(std::string{openInvoice} + "\n42 Cafe|1000|10000|1600|M => 11600\n" + row.rows);
  }
}

TEST(Sale, EveryWayToCloseADocumentThatIsPaid) {
  for (const char* close :
       {"45 T => 00000001|116|4", "45 => 00000001|116|4", "45 E => 00000001|116|4",
        "45 T|0 => 00000001|116|4",
        "45 A => 00000001|116|4\n38 * => 0|4|1|0|0|0\n41 x|S =>\n45 E|0 => 00000001|116|4"}) {
    Till till;
    till.dialogue(std::string{openInvoice} + "\n42 Cafe|1000|100|1600|M => 116\n44 |120|T => 0|4\n" + close);
    EXPECT_EQ(till.device.works().books.day.invoices, 1) << close;
    EXPECT_FALSE(till.lastSaved.open) << close;
    EXPECT_EQ(bench::occurrences(till.paper(), "CAMBIO"), 1U) << close;
  }
}

TEST(Sale, WhatCannotBeSavedIsRefusedAndCanBeSentAgain) {
  Till till;
  till.dialogue(std::string{openInvoice} + "\n42 Cafe|1000|100|1600|M => 116\n44 |116|T => 0|0");
  till.isDiskFull = true;
  till.dialogue("45 T => !25\n44 |0|C => !25\n43 | => 116|100|16|116|1");
  till.isDiskFull = false;
  till.dialogue("45 T => 00000001|116|0");
  till.isDiskFull = true;
  till.dialogue("40 |||||||| => !25\n48 => !25\n39 Z => !25\n58 260101|120000 => !25\n80 => ZPV0000007");
  till.isDiskFull = false;
  till.dialogue("40 |||||||| => 00000002\n44 |0|C => 00000002");
  till.faults.add(virtual_printer::parsePlan("day-change"));
  till.isDiskFull = true;
  till.dialogue("39 Z => !25");
  till.isDiskFull = false;
  till.dialogue("40 ||||||||; 40 ||||||D|| => !23\n39 Z\n40 |||||||| => 00000003");
  EXPECT_EQ(till.lastSaved.zRecords.size(), 1U) << "the Z that could not be saved has not been made";
}

TEST(Sale, CountersAtTheirLimitRefuse) {
  virtual_printer::Books books;
  books.counters = {99'999'998, 99'999'999, 99'999'999, 99'999'999};
  Till till{books};
  till.dialogue(
      "40 ||||||D|| => !26\n48 => !26\n39 Z => !26\n40 |||||||| => 99999999\n44 |0|C\n40 |||||||| => !26");
  books.counters = {};
  books.day.sales.taxes[2] = 1'000'000'000'000'000'000;
  Till{books}.dialogue("40 |||||||| => !26");
}

TEST(Sale, ACancelledDocumentUsesItsNumberAndNothingElse) {
  for (const char* open : {openInvoice, openCreditNote}) {
    Till till;
    till.say(open);
    till.say(std::string{"42 Cafe|1000|100|1600|"} + (open == openInvoice ? "M" : "m"));
    EXPECT_EQ(till.say("44 |0|C"), "00000001");
    const virtual_printer::DayTotals& day = till.lastSaved.day;
    EXPECT_EQ(day.cancelled, 1);
    EXPECT_EQ(day.sales, virtual_printer::Figures{});
    EXPECT_EQ(day.returns, virtual_printer::Figures{});
    EXPECT_EQ(day.rates, virtual_printer::RateTable{});
    EXPECT_EQ(till.say(open), "00000002");
  }
}

TEST(Sale, ResetCancelsWhatIsOpenInAnyPhaseAndAnswersNothing) {
  const std::string reset = zentaro::testing::bytes("<07><08><09><0A><0B><0C><0D><0E><0F><10><11>");
  for (const char* rows :
       {"48\n49 x", "40 ||||||||\n42 a|1000|100|0|M", "40 ||||||||\n42 a|1000|100|0|M\n44 |100|T",
        "40 ||||||||\n42 a|1000|100|0|M\n44 |100|T\n45 A"}) {
    Till till;
    till.dialogue(rows);
    till.say("A0");
    till.engine.receive(reset, till.now);
    EXPECT_EQ(till.arrived(), "") << rows;
    EXPECT_EQ(till.say("38 *").substr(0, 4), "0|0|") << rows;
    EXPECT_EQ(till.lastSaved.day.cancelled, 1) << rows;
    EXPECT_NE(till.paper().find("DOCUMENTO ANULADO"), std::string::npos) << rows;
  }
}

TEST(Sale, StatusBitsFollowTheDocument) {
  Till till;
  const struct {
    const char* command;
    const char* fiscal;
  } rows[] = {
      {"38 N", "0000"}, {openInvoice, "0001"}, {"42 a|1000|100|1600|M", "0001"}, {"44 |116|T", "0011"},
      {"45 A", "0009"}, {"45 E", "0020"},      {openCreditNote, "0022"},         {"44 |0|C", "0020"},
      {"48", "0024"},   {"4A", "0020"},        {"42 a|1000|100|1600|M", "8020"}, {"39 Z", "0000"},
      {"A0", "0000"},   {"99", "8000"}};
  for (const auto& row : rows) {
    till.say(row.command);
    EXPECT_EQ(till.fiscalStatus, row.fiscal) << row.command;
    EXPECT_EQ(till.printerStatus,
              std::string{row.command} == "A0" || std::string{row.command} == "99" ? "0100" : "0000");
  }
}

}  // namespace virtual_printer::sale_test
