// Clock, texts, stations, and a printer whose paper or memory is in trouble.
#include "bench.h"

namespace virtual_printer::service_test {

using bench::Till;
using namespace std::chrono_literals;

TEST(Clock, IsSetReadAndGoesOn) {
  Till till;
  till.dialogue(R"(
    59 => 261124|150400
    58 250201|090507 =>
    59 => 250201|090507
    58 250229|090507; 58 251301|090507; 58 250201|240000; 58 250201|0905; 58 => !17)");
  till.now.local += 90s;
  EXPECT_EQ(till.say("59"), "250201|090637");
  Till restarted{till.lastSaved};
  EXPECT_EQ(restarted.say("59"), "250201|090507") << "the offset survives a restart";
}

TEST(Texts, HeaderAndFooterStandOnTheNextDocument) {
  Till till;
  till.dialogue(R"(
    5D 1|CALLE REAL; 5D 5|CARACAS; 5E 1|GRACIAS =>
    5D 0|x; 5D 6|x; 5D 2.5|x; 5E |x => !19
    40 ||||||||
    42 a|1000|100|0|M
    44 |100|T
    45 T)");
  const std::string paper = till.paper();
  EXPECT_LT(paper.find("CALLE REAL"), paper.find("CARACAS"));
  EXPECT_LT(paper.find("TOTAL"), paper.find("GRACIAS"));
  till.dialogue("5D 1| =>\n48\n4A");
  EXPECT_EQ(till.lastSheet().find("CALLE"), std::string::npos);
}

TEST(Stations, SerialDrawersFeedAndSlip) {
  Till till;
  till.dialogue(R"(
    80 => ZPV0000007
    7B; 7C; 50; 4B =>
    AA 1,500.00|JOSE PEREZ|24/11/2026; AB JOSE PEREZ|V1|0414 => !24
    A0; AA 1,500.00|JOSE PEREZ|24/11/2026; AB JOSE PEREZ|V1|0414; A1 =>
    AA 1,500.00|JOSE PEREZ|24/11/2026 => !24
    07; FF x => !01)");
}

TEST(Stations, AChequeInTheMiddleOfAnInvoiceIsASheetOfItsOwn) {
  Till till;
  till.dialogue(
      "40 ||||||||\n42 Cafe|1000|100|0|M\nA0\nAA 1,00|JOSE|24/11/2026\nA1\n44 |100|T\n45 T => "
      "00000001|100|0");
  const auto& sheets = till.device.roll().sheets();
  ASSERT_EQ(sheets.size(), 2U);
  EXPECT_EQ(sheets[0].kind, virtual_printer::SheetKind::ChequeFace);
  EXPECT_NE(textPaper({sheets[0]}).find("JOSE"), std::string::npos);
  EXPECT_EQ(textPaper({sheets[1]}).find("JOSE"), std::string::npos);
}

TEST(Trouble, PaperOutHoldsTheDocumentUntilPaperIsBack) {
  for (const char* trouble : {"paper-out", "cover-open"}) {
    Till till;
    till.dialogue("40 ||||||||\n42 a|1000|100|0|M");
    till.faults.add(parsePlan(trouble));
    const std::string refusal = std::string{trouble} == "paper-out" ? "!20" : "!21";
    for (const char* printing : {"42 b|1000|100|0|M", "41 x|S", "44 |100|T", "45 T", "44 |0|C", "43 |"})
      till.dialogue(printing + (" => " + refusal));
    till.dialogue("38 * => " + std::string{trouble[0] == 'p' ? "32" : "4"} +
                  "|1|1|0|0|0\n59 => 261124|150400\n7B =>");
    till.faults.clear();
    till.dialogue("42 b|1000|100|0|M => 200\n44 |200|T => 0|0\n45 T => 00000001|200|0");
    till.faults.add(parsePlan(trouble));
    till.dialogue("39 Z => " + refusal);
    EXPECT_EQ(till.say("39 X|S").substr(0, 5), "2.00|") << "reading needs no paper";
  }
}

TEST(Trouble, AFullMemoryTakesNeitherDocumentsNorClosings) {
  Till till;
  till.faults.add(parsePlan("memory-full"));
  till.dialogue("40 |||||||| => !22\n40 ||||||D|| => !22\n39 Z => !22\n48 => 00000001\n4A => 00000001");
  EXPECT_EQ(till.fiscalStatus, "00A0");
}

TEST(Trouble, ADayChangeAsksForAZAndIsOverWithIt) {
  Till till;
  till.faults.add(parsePlan("day-change"));
  till.dialogue("40 |||||||| => !23");
  EXPECT_EQ(till.fiscalStatus, "8100");
  till.say("39 Z");
  till.dialogue("40 |||||||| => 00000001");
  EXPECT_EQ(till.fiscalStatus, "0001");
}

TEST(Trouble, APowerCutEndsTheOpenDocumentAsCancelledAtTheRestart) {
  Till till;
  till.dialogue("40 ||||||||\n42 a|1000|100|0|M");
  till.faults.add(parsePlan("power-cut=3 on item"));
  EXPECT_EQ(till.say("42 b|1000|100|0|M"), "no answer");
  till.wait(2999ms);
  EXPECT_EQ(till.say("38 N"), "no answer") << "still dark";
  till.wait(1ms);
  till.arrived();
  EXPECT_EQ(till.say("38 *"), "0|0|1|0|0|0");
  const std::string last = till.lastSheet();
  EXPECT_NE(last.find("FACTURA:                        00000001"), std::string::npos);
  EXPECT_NE(last.find("DOCUMENTO ANULADO"), std::string::npos);
  EXPECT_EQ(till.say("40 ||||||||"), "00000002");
  till.faults.add(parsePlan("power-cut=1 on item; repeat-answer on serial"));
  till.say("42 b|1000|100|0|M");
  till.wait(1s);
  till.arrived();
  EXPECT_EQ(till.say("80"), "ZPV0000007") << "there is no answer yet to repeat";
  Books books;
  books.open = OpenMark{DocumentKind::CreditNote, 2};
  Till found{books};
  EXPECT_EQ(found.device.roll().sheets().back().title, "NOTA DE CREDITO 00000002 ANULADO");
}

TEST(Trouble, WhatStoodOnTheLineIsGoneWithThePower) {
  Till till;
  till.say("7B");
  till.faults.add(virtual_printer::parsePlan("power-cut=1 on serial"));
  const std::string lost = zentaro::testing::commandFrame('"', "80");
  const std::string next = zentaro::testing::commandFrame('#', "59");
  till.engine.receive(lost + next + next.substr(0, 4), till.now);
  till.wait(1s);
  till.arrived();
  till.engine.receive(next.substr(4), till.now);
  EXPECT_EQ(till.arrived(), "");
  till.faults.add(virtual_printer::parsePlan("repeat-answer"));
  EXPECT_EQ(till.say("59"), "261124|150400") << "there is nothing to repeat";
}

}  // namespace virtual_printer::service_test
