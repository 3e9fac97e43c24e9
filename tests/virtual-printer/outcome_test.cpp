// The table "What a host sees" of the manual, row by row, with a small host of its own: it waits 12 seconds
// from the last byte, takes the first frame of what has come, and looks at sequence, checksum and bit 15.
#include <fstream>

#include "bench.h"

using bench::Till;
using namespace printer;

namespace {

constexpr std::chrono::seconds timeOut{12};

struct Row {
  std::string plan, outcome, verified, tookEffect, next;
};

std::vector<Row> rowsOfTheManual() {
  std::vector<Row> rows;
  std::ifstream manual{MANUAL};
  bool isInTable = false;
  for (std::string line; std::getline(manual, line);) {
    if (line.starts_with("| Fault | Outcome |")) isInTable = true;
    if (line.empty()) isInTable = false;
    if (!isInTable || !line.starts_with("| `")) continue;
    std::vector<std::string> cells = bench::split(line, '|');
    for (std::string& cell : cells) std::erase_if(cell, [](char c) { return c == '`'; });
    const auto cell = [&](std::size_t at) { return cells.at(at).substr(1, cells.at(at).size() - 2); };
    rows.push_back({cell(1), cell(2), cell(3), cell(4), cell(5)});
  }
  return rows;
}

class Host {
 public:
  Host(Till& till, bool verifies) : till_{till}, verifies_{verifies} {}

  int ask(const std::string& line) {
    received_.clear();
    if (!till_.isHungUp) take(till_.exchange(line));
    auto deadline = till_.now.steady + timeOut;
    while (!isComplete() && till_.now.steady < deadline) {
      till_.now.steady = std::min(till_.engine.nextDue().value_or(deadline), deadline);
      const std::string bytes = till_.arrived();
      if (till_.isHungUp || bytes.empty()) continue;
      take(bytes);
      deadline = till_.now.steady + timeOut;
    }
    return isComplete() ? outcome() : 1;
  }

 private:
  void take(const std::string& bytes) {
    received_ += bytes;
    received_.erase(0, received_.find_first_not_of('\x0C'));
  }

  bool isComplete() const {
    const std::size_t end = received_.find('\x03');
    return end != std::string::npos && received_.size() >= end + 5;
  }

  int outcome() const {
    const std::size_t begin = received_.find('\x02');
    if (begin == std::string::npos) return 2;
    const std::string frame = received_.substr(begin, received_.find('\x03', begin) + 1 - begin);
    unsigned sum = 0;
    for (const char byte : frame) sum += static_cast<unsigned char>(byte);
    if (verifies_ && std::stoul(received_.substr(begin + frame.size(), 4), nullptr, 16) != (sum & 0xFFFFU))
      return 3;
    if (frame[1] != till_.sequence) return 4;
    const std::vector<std::string> fields = bench::split(frame, '\x1C');
    const unsigned long bits = std::stoul(fields.at(1), nullptr, 16) | std::stoul(fields.at(2), nullptr, 16);
    return (bits & 0x8000U) != 0 ? 5 : 0;
  }

  Till& till_;
  bool verifies_;
  std::string received_;
};

void play(const Row& row, bool verifies) {
  SCOPED_TRACE(row.plan + (verifies ? ", verified" : ""));
  Till till;
  Host host{till, verifies};
  const bool isItem = row.plan.ends_with("item");
  if (isItem)
    till.dialogue("40 ||||||||\n42 a|1000|100|0|M");
  else
    till.say("59");
  till.faults.add(parsePlan(row.plan));
  const int itemsBefore = till.device.works().machine.document().itemCount;
  const int invoicesBefore = till.device.works().books.counters.invoice;
  const int outcome = host.ask(isItem ? "42 b|1000|100|0|M" : "40 ||||||||");
  EXPECT_EQ(std::to_string(outcome), verifies ? row.verified : row.outcome);
  const bool tookEffect = till.device.works().machine.document().itemCount > itemsBefore ||
                          till.device.works().books.counters.invoice > invoicesBefore;
  EXPECT_EQ(tookEffect ? "yes" : "no", row.tookEffect);
  EXPECT_EQ(std::to_string(host.ask("38 N")), row.next);
}

}  // namespace

TEST(Outcomes, AHostSeesWhatTheManualSays) {
  const std::vector<Row> rows = rowsOfTheManual();
  ASSERT_FALSE(rows.empty()) << "no table in " << MANUAL;
  std::vector<bool> seen(effectTable().size());
  for (const Row& row : rows) {
    seen[static_cast<std::size_t>(parsePlan(row.plan).at(0).effect)] = true;
    play(row, false);
    play(row, true);
  }
  for (const EffectEntry& entry : effectTable())
    EXPECT_TRUE(seen[static_cast<std::size_t>(entry.effect)]) << entry.name << " is not in the table";
}
