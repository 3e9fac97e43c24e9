// The sample sale beside faults: what it says became of it is what is on the paper.
#include "virtual-printer/bench.h"
#include "virtual-printer/line/sample_sale.h"

namespace virtual_printer::sample_test {

using namespace bench;
using End = SampleSale::End;

void run(Till& till, SampleSale& sale) {
  for (int look = 0; look < 2000 && !sale.end(); ++look) {
    if (const auto frame = sale.next(till.now.steady)) till.engine.receive(*frame, till.now);
    for (const Output& output : till.engine.due(till.now)) sale.take(output.bytes, till.now.steady);
    till.wait(20ms);
  }
}

TEST(SampleSale, SaysWhatIsOnThePaper) {
  const struct {
    const char* plan;
    End end;
    const char* detail;
    std::size_t invoices, cancelled;
  } rows[] = {
      {"paper-near-end", End::Printed, "00000001", 1, 0},
      {"wait=6 on close", End::Printed, "00000001", 1, 0},
      {"lose-answer on close", End::Unanswered, "1", 1, 0},
      {"bad-checksum on close", End::Unanswered, "1", 1, 0},
      {"bad-sequence on close", End::Unanswered, "1", 1, 0},
      {"delay=5 on close", End::Unanswered, "1", 1, 0},
      {"lose-answer on close; lose-answer on status after 1", End::Unanswered, "1", 1, 0},
      {"lose-command on close", End::NotPrinted, "", 0, 1},
      {"lose-answer on item", End::NotPrinted, "", 0, 1},
      {"lose-answer on open", End::NotPrinted, "", 0, 1},
      {"power-cut=3 on close", End::NotPrinted, "", 0, 1},
      {"day-change", End::Refused, "ERROR 23 SE REQUIERE CIERRE Z", 0, 0},
      {"paper-out on item times 1", End::Refused, "ERROR 20 SIN PAPEL", 0, 1},
      {"paper-out on item", End::Refused, "ERROR 20 SIN PAPEL", 0, 0},
      {"lose-command always", End::Unknown, "", 0, 0},
      {"lose-command on close,status after 1 always", End::Unknown, "", 0, 0},
      {"lose-command on close; lose-command on status after 1 times 4", End::NotPrinted, "", 0, 1},
      {"lose-command on close; lose-command on status after 1 times 5", End::Unknown, "", 0, 0},
  };
  for (const auto& row : rows) {
    Till till;
    till.faults.add(parsePlan(row.plan));
    SampleSale sale;
    run(till, sale);
    EXPECT_EQ(sale.end(), row.end) << row.plan;
    EXPECT_EQ(sale.detail(), row.detail) << row.plan;
    EXPECT_EQ(occurrences(till.paper(), "CAMBIO "), row.invoices) << row.plan;
    EXPECT_EQ(occurrences(till.paper(), "DOCUMENTO ANULADO"), row.cancelled) << row.plan;
  }
}

TEST(SampleSale, CancelsWhatAnEarlierOneLeftOpen) {
  Till till;
  till.faults.add(parsePlan("paper-out on item"));
  SampleSale first, second, third;
  run(till, first);
  EXPECT_EQ(till.say("38 N").substr(0, 7), "0001|01") << "still open";
  second.cancelFirst();
  run(till, second);
  EXPECT_EQ(second.detail(), "ERROR 20 SIN PAPEL");
  till.faults.clear();
  third.cancelFirst();
  run(till, third);
  EXPECT_EQ(third.end(), End::Printed);
  EXPECT_EQ(third.detail(), "00000002");
}

}  // namespace virtual_printer::sample_test
