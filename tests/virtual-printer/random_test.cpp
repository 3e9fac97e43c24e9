// A till gone mad: any command with any fields, thousands of times. What must hold for every answer does so.
#include <random>

#include "bench.h"
#include "virtual-printer/device/commands.h"
#include "virtual-printer/fiscal/books_json.h"

namespace virtual_printer::random_test {

using bench::Till;

class MadTill {
 public:
  explicit MadTill(unsigned seed) : dice_{seed} {}

  std::string command() {
    constexpr std::array<const char*, 6> sale{
        "40 ||||||||", "42 a|1500|999|1600|M", "42 b|1000|501|0|M", "44 |700|T", "45 T", "44 x|9|D"};
    if (roll(3) > 0) return sale[roll(sale.size())];
    const auto table = commandTable();
    std::string line = hexadecimal(table[roll(table.size())].code, 2);
    const std::size_t fields = roll(8);
    for (std::size_t at = 0; at < fields; ++at) line += (at == 0 ? " " : "|") + field();
    return line;
  }

 private:
  std::size_t roll(std::size_t sides) { return dice_() % sides; }

  std::string field() {
    constexpr std::array<const char*, 22> usual{
        "",         "M",    "m",  "T",   "C",         "D",           "A",      "E",
        "B",        "U",    "X",  "Z",   "261124",    "235959",      "300000", "00000001",
        "99999999", "1250", "-1", "100", "999999999", "999999999999"};
    if (roll(8) > 0) return usual[roll(usual.size())];
    std::string noise;
    for (std::size_t length = roll(60); length > 0; --length) noise += static_cast<char>(0x80 + roll(0x80));
    return noise;
  }

  std::mt19937 dice_;
};

void check(const Till& till, const std::string& frame, const std::string& command) {
  ASSERT_GT(frame.size(), 15U) << command;
  const std::string body = frame.substr(0, frame.find('\x03'));
  EXPECT_EQ(body.find("\x1C\x1C"), std::string::npos) << command << ": an empty field";
  EXPECT_NE(body.back(), '\x1C') << command << ": an empty field";
  const std::vector<std::string> parts = zentaro::testing::split(body, '\x1C');
  const bool isRefused = (std::stoul(parts.at(2), nullptr, 16) & 0x8000U) != 0;
  EXPECT_EQ(body.find("ERROR") != std::string::npos, isRefused)
      << command << ": the word and the bit go together";
  const Books& books = till.device.works().books;
  EXPECT_EQ(books.open.has_value(), till.device.works().machine.phase() != Phase::None) << command;
  EXPECT_TRUE(books == till.lastSaved || till.lastSaved == Books{})
      << command << ": not saved before the answer";
}

TEST(MadTill, BreaksNothing) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    Till till;
    MadTill mad{seed};
    for (int round = 0; round < 300 && !testing::Test::HasFailure(); ++round) {
      const std::string command = mad.command();
      SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
      check(till, till.exchange(command), command);
    }
    EXPECT_GT(till.lastSaved.counters.invoice, 1) << "the till has sold something";
    EXPECT_TRUE(booksFromJson(toJson(till.lastSaved)) == till.lastSaved) << "seed " << seed;
  }
}

}  // namespace virtual_printer::random_test
