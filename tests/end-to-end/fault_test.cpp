// The table "What a host sees" of the virtual printer's manual, each row through the library over a real
// pseudo-terminal. Time runs six times as fast for both, so that a time-out of twelve seconds takes two.
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <thread>

#include "automation/conversions.h"
#include "reports/status_hasar.h"
#include "tools/connection/connection.h"

namespace zentaro::testing::fault_test {

constexpr double speed = 6;

class FastClock : public Clock {
 public:
  explicit FastClock(Clock& real) : real_(real), start_(real.secondsSinceMidnight()) {}
  double secondsSinceMidnight() override { return (real_.secondsSinceMidnight() - start_) * speed; }
  LocalTime localTime() override { return real_.localTime(); }
  void sleep(std::chrono::milliseconds time) override { real_.sleep(time); }

 private:
  Clock& real_;
  double start_;
};

struct Row {
  std::string plan;
  int outcome, verified;
  bool tookEffect;
  int next;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.plan; }

std::vector<Row> rowsOfTheManual() {
  const std::regex pattern(R"(\| `([^`]+)` \| (\d) \| (\d) \| (yes|no) \| (\d) \|)");
  std::vector<Row> rows;
  std::ifstream manual(ZENTARO_SOURCES "/docs/virtual-printer.md");
  std::smatch match;
  for (std::string line; std::getline(manual, line);) {
    if (!std::regex_match(line, match, pattern)) continue;
    rows.push_back(
        {match[1], std::stoi(match[2]), std::stoi(match[3]), match[4] == "yes", std::stoi(match[5])});
  }
  return rows;
}

// The plan with its seconds as short as the clock is fast. What comes before or behind the time-out of twelve seconds
// does so by five more: a busy machine looks at the time too late for a fraction of one.
std::string hastened(const std::string& plan) {
  std::smatch match;
  if (!std::regex_search(plan, match, std::regex(R"(^(delay|wait|hang-up|power-cut)=(\d+))"))) return plan;
  double seconds = std::stod(match[2]);
  if (match[1] == "delay") seconds += seconds < 12 ? -5 : 5;
  return match[1].str() + "=" + std::to_string(seconds / speed) + match.suffix().str();
}

class FaultTest : public ::testing::TestWithParam<std::tuple<Row, bool>> {
 protected:
  FaultTest() {
    Services fast = services();
    fast.clock = &clock_;
    scope_.emplace(fast);
    connection_.emplace(tools::PortOptions{}, std::vector<std::string>{"--fault", hastened(row.plan)});
  }

  const Row row = std::get<0>(GetParam());
  const bool strikesAnItem = row.plan.find(" on item") != std::string::npos;

  CZentaro& z() { return connection_->printer(); }

  // What came too late is still on the line, so the printer is asked until it is in step again. No
  // document has no items.
  int itemsOfTheDocument() {
    for (int tries = 0; tries < 20; ++tries) {
      const int outcome = z().Subtotal();
      if (outcome == ENVERR_OK) return toInt32(z().response(7));
      if (outcome == ENVERR_STATUS) return 0;
      std::this_thread::sleep_for(
          std::chrono::milliseconds(50));  // late bytes gather, and opening discards them
      z().PortOpen(false);
      z().PortOpen(true);
    }
    return -1;
  }

 private:
  FastClock clock_{*services().clock};
  std::optional<ServicesScope> scope_;
  std::optional<tools::Connection> connection_;
};

TEST_P(FaultTest, TheHostSeesWhatTheManualSays) {
  z().verifyCheckSum = std::get<1>(GetParam());
  if (strikesAnItem) {
    // The first item belongs to the document; a plan strikes the first it meets, so an item that is not there
    // yet must be free.
    ASSERT_EQ(z().IniciarFactura(), 0);
  }
  const int outcome = strikesAnItem ? z().PasarLineaFactura("Pan", 1, 1, 16) : z().IniciarFactura();
  EXPECT_EQ(outcome, z().verifyCheckSum ? row.verified : row.outcome);
  EXPECT_EQ(z().StatusIF(u"N").int32(), row.next);
  if (outcome == ENVERR_STATUS) return;  // refused: nothing was done
  if (strikesAnItem) {
    EXPECT_EQ(itemsOfTheDocument(), row.tookEffect ? 1 : 0);
  } else {
    EXPECT_EQ(z().GetStatusHASAR()->statusDocumento, row.tookEffect ? 1 : 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Manual, FaultTest,
                         ::testing::Combine(::testing::ValuesIn(rowsOfTheManual()), ::testing::Bool()));

TEST(FaultTable, HasARowForEachEffect) { EXPECT_GE(rowsOfTheManual().size(), 18U); }

}  // namespace zentaro::testing::fault_test
