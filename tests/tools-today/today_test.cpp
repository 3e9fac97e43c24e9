// `zentaro today`: what counts, and how it is told.
#include "support/process.h"
#include "till/books/books.h"
#include "tools/connection/virtual_printer.h"
#include "tools/today/day_figures.h"

namespace zentaro::tools::today_test {

using testing::contains;
using testing::Ran;

till::Job job(till::Kind kind, till::State state, std::int64_t net, std::int64_t total,
              std::string body = "") {
  till::Job job;
  job.kind = kind;
  job.state = state;
  job.net = net;
  job.total = total;
  job.body = std::move(body);
  return job;
}

constexpr auto withIgtf = R"({"document": "invoice", "lines": [{"description": "A", "price": 100, "tax": 16}],
    "payments": [{"amount": 200}], "igtf": {"base": 50, "rate": 3}})";

TEST(DayFigures, CountWhatWasPrintedAndNameWhatNobodyKnows) {
  using till::Kind;
  using till::State;
  till::Job z = job(Kind::Z, State::Printed, 0, 0);
  z.number = 11;
  till::Job later = z;
  later.number = 12;
  const DayFigures figures = figuresOf({
      job(Kind::Invoice, State::Printed, 10000, 11750, withIgtf),
      job(Kind::Invoice, State::Printed, 1000, 1160),  // its content is gone
      job(Kind::CreditNote, State::Printed, 500, 580),
      job(Kind::Invoice, State::NotPrinted, 7000, 8120),
      job(Kind::Invoice, State::Queued, 7000, 8120),
      job(Kind::Invoice, State::Unknown, 300, 348),
      z,
      later,
      job(Kind::Z, State::NotPrinted, 0, 0),
  });
  const auto told = [](const Sold& sold) {
    std::string text = std::to_string(sold.documents);
    for (const std::int64_t cents : {sold.net, sold.tax, sold.igtf, sold.taxOrIgtf, sold.total()})
      text += " " + std::to_string(cents);
    return text;
  };
  EXPECT_EQ(told(figures.invoices), "2 11000 1600 150 160 12910");
  EXPECT_EQ(told(figures.returns), "1 500 0 0 80 580");
  ASSERT_EQ(figures.unknown.size(), 1U);
  EXPECT_EQ(figures.unknown[0].total, 348);
  EXPECT_EQ(figures.lastZ->number, 12);
}

TEST(DayFigures, WriteAmountsAsThePaperDoes) {
  for (const auto& [cents, text] : std::initializer_list<std::pair<std::int64_t, const char*>>{
           {0, "0,00"}, {5, "0,05"}, {99999, "999,99"}, {100000, "1.000,00"}, {-123456789, "-1.234.567,89"}})
    EXPECT_EQ(paperAmount(cents), text);
}

class Today : public testing::Shell {
 protected:
  Today() { ::setenv("ZENTARO_BOOKS", file("books.db").c_str(), 1); }
  ~Today() override { ::unsetenv("ZENTARO_BOOKS"); }

  static void sold(const std::string& id, till::State state, till::Kind kind = till::Kind::Invoice) {
    till::Books books;
    till::Order order;
    order.id = id;
    order.kind = kind;
    order.body = withIgtf;
    order.net = 10000;
    order.total = 11750;
    till::Outcome outcome;
    outcome.state = state;
    outcome.number = 12;
    books.finish(*books.open(order, {}), outcome);
  }
};

TEST_F(Today, TellsTheDayAsTextAsJsonAndAsCsv) {
  EXPECT_TRUE(contains(run("zentaro today").output, "Remains, total Bs                       0,00\n"));
  sold("F-1", till::State::Printed);
  const std::string day = run("date +%F").output.substr(0, 10);
  const Ran today = run("zentaro hoy");
  EXPECT_EQ(today.status, 0);
  for (const std::string& line :
       {"Sales of " + day + "\n", std::string("  net                                 100,00\n"),
        std::string("  IGTF                                  1,50\n"),
        std::string("Remains, total Bs                     117,50\n")})
    EXPECT_TRUE(contains(today.output, line)) << line << today.output;
  EXPECT_EQ(run("zentaro today --csv").output,
            "from,to,kind,documents,net,tax,igtf,tax_or_igtf,total\n" + day + "," + day +
                ",invoices,1,100.00,16.00,1.50,0.00,117.50\n" + day + "," + day +
                ",credit-notes,0,0.00,0.00,0.00,0.00,0.00\n" + day + "," + day + ",unknown,0,,,,,\n");
  EXPECT_TRUE(contains(run("zentaro today --day 2020-01-31 --json").output, "\"documents\": 0"));
  EXPECT_TRUE(contains(run("zentaro today --from 2020-01-31 --json").output, "\"documents\": 1"));
  EXPECT_EQ(run("zentaro today --from 2020-01-31 --to 2020-01-30").status, 2);
  EXPECT_EQ(run("zentaro today --day 31-01-2020").status, 2);
  // Midnight is the counter's, whichever side of that of UTC it is on.
  for (const char* zone : {"TZ=EAST-13 ", "TZ=WEST+11 "})
    EXPECT_TRUE(contains(
        run(std::string(zone) + "zentaro today").output,
        "Sales of " + run(std::string(zone) + "date +%F").output + "Invoices" + std::string(35, ' ') + "1\n"))
        << zone << run(std::string(zone) + "zentaro today").output;
  sold("F-2", till::State::Unknown);
  sold("", till::State::Unknown);
  sold("N-1", till::State::Printed, till::Kind::CreditNote);
  sold("N-2", till::State::Printed, till::Kind::CreditNote);
  sold("Z-1", till::State::Printed, till::Kind::Z);
  const Ran open = run("zentaro today");
  EXPECT_EQ(open.status, 1);
  for (const char* line :
       {"NOT KNOWN whether it was printed: F-2 (Bs 117,50)", "NOT KNOWN whether it was printed: #3 (Bs",
        "Credit notes                               2\n", "Remains, total Bs                    -117,50\n",
        "Last Z                                    12\n"})
    EXPECT_TRUE(contains(open.output, line)) << line << "\n" << open.output;
  EXPECT_TRUE(contains(run("zentaro today --csv").output, ",unknown,2,,,,,\n"));
  const std::string json = run("zentaro today --json").output;
  EXPECT_TRUE(contains(json, "\"lastZ\": 12") && contains(json, "\"id\": \"F-2\"")) << json;
}

TEST_F(Today, AsksThePrinterForItsOwnDay) {
  const VirtualPrinter printer;
  const std::string port = " --device " + printer.device();
  for (const char* step :
       {"IniciarFactura", "PasarLineaFactura Pan 10 1 16", "PasarLineaFactura Sal 200 1 8",
        "PasarLineaFactura Oro 3000 1 31", "PasarLineaFactura Luz 40000 1 0", "RecibirPago 99999",
        "CerrarComprobante", "IniciarDevolucion Ana V1 1 ZPV0000001 2026-01-01 10:00",
        "PasarLineaDevolucion Pan 1 1 16", "PasarLineaDevolucion Sal 20 1 8",
        "PasarLineaDevolucion Oro 300 1 31", "PasarLineaDevolucion Luz 4000 1 0", "CerrarComprobante"})
    ASSERT_EQ(run("zentaro call " + std::string(step) + port).status, 0) << step;
  const std::string paper = printer.paper();
  const Ran ran = run("zentaro today" + port);
  EXPECT_TRUE(contains(ran.output,
                       "The printer ZPV0000001, since its Z 0\n  net                              43.210,00\n"
                       "  tax                                 947,60\n"
                       "  returned, net                     4.321,00\n"))
      << ran.output;
  EXPECT_TRUE(contains(ran.output, "  last invoice                             1\n")) << ran.output;
  EXPECT_EQ(printer.paper(), paper) << "nothing is printed";
}

}  // namespace zentaro::tools::today_test
