// Status answers, closings and memory reports.
#include "bench.h"

namespace virtual_printer::report_test {

using bench::contains;
using bench::Till;

// A day with three rates, a discount, IGTF, a return and a cancelled invoice.
constexpr const char* busyDay = R"(
  40 ||||||||
  42 Cafe|2000|1250|1600|M
  42 Queso|525|999|0|M
  42 Pan|1000|999|800|M
  42 Lujo|1000|999|3100|M
  44 |500|D
  44 |6000|T
  45 U|2000 => 00000001|5293|707
  40 ||||||D||
  42 Pan|1000|999|800|m
  45 T => 00000001|1079|0
  40 ||||||||
  44 |0|C
  48
  4A)";

// One sale of so many cents, exempt, and the closing of its day.
void sellAndClose(Till& till, const std::string& cents) {
  till.dialogue("40 ||||||||\n42 x|1000|" + cents + "|0|M\n44 |" + cents + "|T\n45 T\n39 Z");
}

TEST(Closing, NineteenFiguresInTheirOrder) {
  Till till;
  till.dialogue(busyDay);
  const std::string figures =
      "4.72|22.51|3.60|5.00|0.79|0.00|0.00|261124|8.99|0.72|9.00|2.79|0.00|9.99|0.80|0.00|0.00|0415241126|1";
  const std::size_t sheets = till.device.roll().sheets().size();
  EXPECT_EQ(till.say("39 X|S"), figures);
  EXPECT_EQ(till.device.roll().sheets().size(), sheets) << "an X that is only read prints nothing";
  EXPECT_EQ(till.say("39 X|P"), figures);
  EXPECT_EQ(till.device.roll().sheets().size(), sheets + 1);
  EXPECT_EQ(till.say("39 Z|T"), figures);
  EXPECT_EQ(
      till.say("39 Z"),
      "0.00|0.00|0.00|0.00|0.00|0.00|0.00|261124|0.00|0.00|0.00|0.00|0.00|0.00|0.00|0.00|0.00|0415241126|1");
}

TEST(Closing, BeforeTheFirstInvoiceTheLastOneIsNumberZero) {
  Till till;
  EXPECT_TRUE(till.say("39 X|S").ends_with("|0.00|0000010100|0"));
}

TEST(Closing, RefusesOtherLetters) {
  Till till;
  till.dialogue("39; 39 Y; 39 X|T; 39 Z|P; 39 x => !02");
}

TEST(Closing, ThePaperShowsTheRatesOfTheDay) {
  Till till;
  till.dialogue("40 ||||||D||; 42 a|1000|100|1200|m; 45 T; 39 X|P");
  EXPECT_TRUE(contains(till.lastSheet(), "(12,00%)")) << till.lastSheet();
  till.dialogue("40 ||||||||; 42 a|1000|10000|0|M; 44 |10300|T; 45 U|10000; 39 X|P");
  EXPECT_TRUE(contains(till.lastSheet(), "TOTAL VENTAS                   Bs 100,00\nBI IGTF "))
      << till.lastSheet();
}

TEST(Closing, AZKeepsTheDayAndBeginsANewOne) {
  Till till;
  till.dialogue(busyDay);
  const virtual_printer::DayTotals day = till.lastSaved.day;
  EXPECT_EQ(day.sales.igtf, 60);
  EXPECT_EQ(day.cancelled, 1);
  EXPECT_EQ(day.nonFiscals, 1);
  till.say("39 Z");
  EXPECT_EQ(till.lastSaved.day, virtual_printer::DayTotals{});
  ASSERT_EQ(till.lastSaved.zRecords.size(), 1U);
  EXPECT_EQ(till.lastSaved.zRecords[0].totals, day);
  EXPECT_EQ(till.lastSaved.zRecords[0].number, 1);
  EXPECT_EQ(till.say("40 ||||||||"), "00000003") << "numbers of documents go on";
}

TEST(Memory, ReportsByNumberAndByDate) {
  Till till;
  till.dialogue("58 240301|120000 =>");
  sellAndClose(till, "100");
  till.dialogue("58 240315|120000 =>");
  sellAndClose(till, "200");
  till.dialogue("58 240401|120000 =>");
  sellAndClose(till, "400");
  const struct {
    const char *command, *answer, *printed;
  } rows[] = {{"3A 00000001|00000250|", "3|1|3", "VENTAS                           Bs 7,00"},
              {"3A 00000002|00000002|", "1|2|2", "VENTAS                           Bs 2,00"},
              {"3A 00000004|00000009|", "0|0|0", "VENTAS                           Bs 0,00"},
              {"3A 240301|240331|R", "2|1|2", "VENTAS                           Bs 3,00"},
              {"3A 240315|240315|R", "1|2|2", "VENTAS                           Bs 2,00"},
              {"3A 00000001|00000002|", "2|1|2", "Z 00000002                    15-03-2024"}};
  for (const auto& row : rows) {
    EXPECT_EQ(till.say(row.command), row.answer) << row.command;
    EXPECT_TRUE(contains(till.lastSheet(), row.printed)) << row.command << "\n" << till.lastSheet();
    EXPECT_EQ(contains(till.lastSheet(), "Z 0000000"),
              std::string(row.command).back() != 'R' && row.answer[0] != '0')
        << "R shows totals only";
  }
  till.dialogue(R"(
    3A 00000002|00000001|; 3A 240331|240301|R => !18
    3A 240231|240301|R; 3A 240301|00000001|R => !17
    3A 1|2|; 3A || => !02)");
}

TEST(Memory, AgreesWithTheZOnWhatSalesAre) {
  Till till;
  till.dialogue(std::string{busyDay} + "\n39 Z\n3A 00000001|00000001|");
  const auto& sheets = till.device.roll().sheets();
  for (std::size_t back = 1; back <= 2; ++back) {
    const std::string paper = virtual_printer::textPaper({sheets[sheets.size() - back]});
    for (const char* line : {"VENTAS", "IGTF   ", "DEVOLUCIONES"})
      EXPECT_NE(paper.find(line), std::string::npos) << paper;
    EXPECT_EQ(bench::occurrences(paper, "Bs 52,33\n"), back == 1 ? 2U : 1U) << paper;
    EXPECT_EQ(bench::occurrences(paper, "Bs 52,93"), 0U) << "IGTF is none of the sales" << paper;
    EXPECT_EQ(bench::occurrences(paper, "DEVOLUCIONES                    Bs 10,79\n"), back == 1 ? 2U : 0U);
  }
}

TEST(Status, CountersInTheirOrder) {
  Till till;
  till.dialogue(busyDay);
  till.dialogue(R"(
    38 N => 0020|00|4A|261124|150400|1|1|2|1|0
    38 N => 0020|00|4A|261124|150400|1|1|2|1|0
    38 * => 0|0|2|0|1|1
    38 N => 0020|00|4A|261124|150400|1|1|2|1|0
    40 |||||||| => 00000003
    38 => 0021|01|40|261124|150400|1|1|3|1|0
    38 * => 0|1|3|0|1|1
    44 |0|C => 00000003
    40 ||||||D|| => 00000002
    38 * => 0|2|3|0|2|1
    44 |0|C => 00000002
    48 => 00000002
    38 * => 0|3|3|0|2|2
    4A => 00000002
    40 ||||||||; 42 a|1000|100|0|M; 44 |100|T; 45 A
    38 * => 0|4|4|0|2|2)");
}

}  // namespace virtual_printer::report_test
