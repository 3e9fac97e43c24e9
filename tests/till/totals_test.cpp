// The arithmetic of a document. Expected amounts are worked out by hand.
#include "till/document/totals.h"

#include <gtest/gtest.h>

#include "printer/czentaro.h"
#include "support/line.h"
#include "till/course/steps.h"
#include "till/document/prices_with_tax.h"

namespace zentaro::till::totals_test {

Item item(Thousandths quantity, Cents price, Rate tax) { return {"x", price, quantity, tax}; }

TEST(Totals, FollowTheRuleOfThePrinter) {
  struct {
    const char* name;
    std::vector<Item> items;
    std::vector<Cents> discounts;
    Cents net, tax;
  } const rows[] = {
      {"5.24475 is 5.24", {item(525, 999, 0)}, {}, 524, 0},
      {"half a cent is a cent", {item(500, 1, 0)}, {}, 1, 0},
      {"tax once per rate, not per line", {item(1000, 3, 1600), item(1000, 3, 1600)}, {}, 6, 1},
      {"tax of each rate is rounded", {item(1000, 3, 1600), item(1000, 6, 800)}, {}, 9, 0},
      {"largest line", {item(9999999, 999999999, 1600)}, {}, 9999998990000, 1599999838400},
      {"cent left over, exempt first", {item(1000, 4, 0), item(1000, 4, 1600)}, {1}, 7, 1},
      // 1 over 4 and 4 at 16 and 8 %: a half each, the cent goes to 16 %, the first rate: 3 and 4.
      {"cent left over, first rate", {item(1000, 4, 800), item(1000, 4, 1600)}, {1}, 7, 0},
      {"cent left over, 8 before 31 %", {item(1000, 7, 3100), item(1000, 7, 800)}, {1}, 13, 2},
      // The second discount is shared over what the first one left: 50 and 150 of 200, then 100: 25 and 75.
      {"second discount", {item(1000, 100, 0), item(1000, 300, 1600)}, {200, 100}, 100, 12},
      // 99 % of 0.03 in two: 1.98 rounded down is 1 each, and the cent left over goes to the exempt base.
      {"everything", {item(1000, 2, 0), item(1000, 1, 1600)}, {3}, 0, 0},
  };
  for (const auto& row : rows) {
    Sale sale;
    sale.isCreditNote = true;  // owes no payments
    sale.lines.assign(row.items.begin(), row.items.end());
    for (const Cents amount : row.discounts) sale.discounts.push_back({amount, ""});
    Problems problems;
    const Totals totals = reckon(sale, problems);
    EXPECT_TRUE(problems.empty()) << row.name << ": " << problems.front().text;
    EXPECT_EQ(totals.net, row.net) << row.name;
    EXPECT_EQ(totals.tax, row.tax) << row.name;
  }
}

struct PaymentRow {
  const char* name;
  Igtf igtf;
  std::vector<Cents> payments;
  const char* path;  // of the problem; null for none
  const char* text;
};

// One item of 100.00 at 16 %: 116.00 are due.
TEST(Totals, PaymentsMustFit) {
  const PaymentRow rows[] = {
      {"exact", {}, {11600}, nullptr, nullptr},
      {"change", {}, {5000, 20000}, nullptr, nullptr},
      {"what could be due with IGTF", {}, {11600, 100}, nullptr, nullptr},
      {"with IGTF", {10000, 300}, {11600, 300}, nullptr, nullptr},
      {"none",
       {},
       {},
       "payments",
       "are 0.00 together, but 116.00 are due (total 116.00, IGTF 0.00); 116.00 are"},
      {"one cent", {}, {11599}, "payments", "0.01 are missing"},
      {"without the IGTF", {10000, 300}, {11600}, "payments", "(total 116.00, IGTF 3.00); 3.00 are missing"},
      {"paid already", {}, {11948, 1}, "payments[1]", "comes when everything is paid"},
      {"base above the total", {11601, 300}, {20000}, "igtf.base", "is more than the total of 116.00"},
  };
  for (const PaymentRow& row : rows) {
    Sale sale;
    sale.lines = {item(1000, 10000, 1600)};
    sale.igtf = row.igtf;
    for (const Cents amount : row.payments) sale.payments.push_back({amount, ""});
    Problems problems;
    reckon(sale, problems);
    ASSERT_EQ(problems.size(), row.path == nullptr ? 0U : 1U) << row.name;
    if (row.path == nullptr) continue;
    EXPECT_EQ(problems[0].path, row.path) << row.name;
    EXPECT_NE(problems[0].text.find(row.text), std::string::npos) << row.name << ": " << problems[0].text;
  }
}

TEST(Totals, MeetThePricesWithTax) {
  struct {
    const char* name;
    std::vector<Item> items;
    std::vector<Cents> discounts;
    std::optional<Cents> total;
    Cents net, printed;
    const char *warning, *problem;
  } const rows[] = {
      {"100.00 of 116.00", {item(1000, 11600, 1600)}, {}, {}, 10000, 11600, "", ""},
      {"exempt", {item(2500, 333, 0)}, {}, {}, 833, 833, "", ""},
      // 0.86 three times, tax 0.4128.
      {"three of 1.00",
       {item(1000, 100, 1600), item(1000, 100, 1600), item(1000, 100, 1600)},
       {},
       {},
       258,
       299,
       "add up to 3.00 with tax, but 2.99 is printed (net 2.58, tax 0.41)",
       ""},
      {"ten of 1.00 in a line",
       {item(10000, 100, 1600)},
       {},
       {},
       860,
       998,
       "",
       "add up to 10.00 with tax, but 9.98 is printed (net 8.60, tax 1.38); write the lines with quantity 1"},
      {"the program's own total holds", {item(10000, 100, 1600)}, {}, 998, 860, 998, "", ""},
      {"even against a sum that is met",
       {item(1000, 11600, 1600)},
       {},
       11601,
       10000,
       11600,
       "",
       "is 116.01, but 116.00 would be printed (net 100.00, tax 16.00; the IGTF is apart)"},
      // 116.00 and 108.00 with tax are 200.00 without; 22.40 of 224.00 are 20.00 of 200.00.
      {"a discount over two rates",
       {item(1000, 11600, 1600), item(1000, 10800, 800)},
       {2240},
       {},
       18000,
       20160,
       "",
       ""},
      // Three of 0.46, tax 0.22; of the discount 0.2846 is net, 0.28: 1.10 and 0.18. Two cents for an item and a discount.
      {"a discount has its cent, too",
       {item(3000, 53, 1600)},
       {33},
       {},
       110,
       128,
       "add up to 1.26 with tax, but 1.28 is printed (net 1.10, tax 0.18)",
       ""},
      {"all of it", {item(1000, 100, 1600)}, {100}, {}, 0, 0, "", ""},
      // 4,310,344,827.59 a piece: doubles would have no cents left.
      {"the largest price", {item(1000, 499999999999, 1600)}, {}, {}, 431034482758, 499999999999, "", ""},
      {"half a cent is a cent",
       {item(1000, 4, 6000)},
       {},
       {},
       3,
       5,
       "add up to 0.04 with tax, but 0.05 is printed (net 0.03, tax 0.02)",
       ""},
  };
  for (const auto& row : rows) {
    Sale sale;
    sale.isCreditNote = true;  // owes no payments
    sale.lines.assign(row.items.begin(), row.items.end());
    for (const Cents amount : row.discounts) sale.discounts.push_back({amount, ""});
    sale.total = row.total;
    takeTaxOff(sale);
    Problems problems;
    const Totals totals = reckon(sale, problems);
    EXPECT_EQ(totals.net, row.net) << row.name;
    EXPECT_EQ(totals.total(), row.printed) << row.name;
    const auto warning = sumWarning(sale, totals);
    const std::string problem = problems.empty() ? "" : problems.front().text;
    EXPECT_EQ(problem.substr(0, std::string_view(row.problem).size()), row.problem) << row.name;
    EXPECT_EQ(problem.empty(), std::string_view(row.problem).empty()) << row.name << problem;
    EXPECT_EQ(problem.empty() && warning ? warning->text : "", row.warning) << row.name;
  }
}

class Subtotal : public testing::LineTest {};

TEST_F(Subtotal, OfThePrinterMustBeTheFiles) {
  Sale sale;
  sale.lines = {item(1000, 10000, 1600)};
  const std::vector<SaleStep> steps = stepsOf(sale, {10000, 1600});
  CZentaro printer;
  printer.CommPort = 1;
  printer.PortOpen(true);
  for (const auto& [answered, objection] :
       {std::pair{"11600", ""},
        {"0", "the printer's total is 0.00, the file's is 116.00"},
        {"11601", "the printer's total is 116.01, the file's is 116.00"}}) {
    line.answer({{"<STX><SEQ>C<FS>0000<FS>0000<FS>" + std::string(answered) + "<ETX>0000"}});
    EXPECT_EQ(steps[2].send(printer), 0);
    EXPECT_EQ(steps[2].objection(printer), objection);
  }
}

TEST(Totals, NameWhatGoesBeyondTheLimits) {
  Sale sale;
  sale.isCreditNote = true;
  for (const Rate rate : {1200, 1600, 800, 3100}) sale.lines.emplace_back(item(1000, 100, rate));
  sale.lines.emplace_back(item(999'999'999, 999'999'999'999, 0));
  sale.discounts = {{301, ""}, {300, ""}};
  Problems problems;
  const Totals totals = reckon(sale, problems);
  ASSERT_EQ(problems.size(), 3U);
  EXPECT_EQ(problems[0].path, "lines[3].tax");
  EXPECT_EQ(problems[1].path, "lines[4]");
  EXPECT_EQ(problems[2].path, "discounts[0].amount");
  EXPECT_EQ(problems[2].text, "is more than the 3.00 that are left without tax");
  EXPECT_EQ(totals.net, 0) << "all of the net amount may be discounted";
}

}  // namespace zentaro::till::totals_test
