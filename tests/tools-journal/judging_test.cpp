// What the journal says about a sale, by entries and counters that the row tells.
#include "till/books/judging.h"

#include <gtest/gtest.h>

namespace zentaro::tools::judging_test {

constexpr std::optional<Fact> printed = Fact::Printed, notPrinted = Fact::NotPrinted, unknown = Fact::Unknown,
                              cutShort = std::nullopt;

Entry entry(const char* key, const char* digest, std::optional<Fact> fact, bool isTold = true) {
  Entry made;
  made.key = key;
  made.digest = digest;
  made.fact = fact;
  made.isTold = isTold;
  return made;
}

TEST(Journal, LetsNothingPrintTwice) {
  struct {
    const char* name;
    std::vector<Entry> entries;
    Wish wish;
    Answer beforePort, answer;
  } const rows[] = {
      {"nothing known", {}, {"K", "d", false}, Answer::Print, Answer::Print},
      {"printed",
       {entry("K", "d", printed)},
       {"K", "d", false},
       Answer::AlreadyPrinted,
       Answer::AlreadyPrinted},
      {"printed, asked again",
       {entry("K", "d", printed)},
       {"K", "d", true},
       Answer::AlreadyPrinted,
       Answer::AlreadyPrinted},
      {"other content",
       {entry("K", "e", notPrinted)},
       {"K", "d", false},
       Answer::OtherContent,
       Answer::OtherContent},
      {"not printed", {entry("K", "d", notPrinted)}, {"K", "d", false}, Answer::Print, Answer::Print},
      {"not printed, then printed",
       {entry("K", "d", notPrinted), entry("K", "d", printed)},
       {"K", "d", false},
       Answer::AlreadyPrinted,
       Answer::AlreadyPrinted},
      {"cut short", {entry("K", "d", cutShort)}, {"K", "d", false}, Answer::Print, Answer::StillUnknown},
      {"another key is unknown", {entry("L", "d", unknown)}, {"K", "d", false}, Answer::Print, Answer::Print},
      {"two coffees", {entry("", "d", printed)}, {"", "d", false}, Answer::Print, Answer::Print},
      {"nobody was told",
       {entry("", "d", printed, false)},
       {"", "d", false},
       Answer::Print,
       Answer::PrintedUntold},
      {"nobody was told, a new customer",
       {entry("", "d", printed, false)},
       {"", "d", true},
       Answer::Print,
       Answer::Print},
      {"the same content is unknown",
       {entry("L", "d", unknown)},
       {"", "d", false},
       Answer::Print,
       Answer::StillUnknown},
      {"another content is unknown",
       {entry("", "e", unknown)},
       {"", "d", false},
       Answer::Print,
       Answer::Print},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(lookUp(row.entries, row.wish).answer, row.beforePort) << row.name;
    EXPECT_EQ(mayPrint(row.entries, row.wish).answer, row.answer) << row.name;
  }
}

// The entry began with the number 7, 100.00 sold and the Z 3.
TEST(Journal, EndsOnlyItsOwnDocumentAndBelievesOnlyItsOwnDay) {
  struct {
    const char* name;
    std::optional<int> number;
    Counters now;
    int lastZ;
    Question question;
  } const rows[] = {
      {"nothing open", {}, {0, 8, 10500}, 3, Question::Countable},
      {"its number was told", 8, {1, 8, {}}, 3, Question::ItsDocument},
      {"one more than the last", {}, {1, 8, {}}, 3, Question::ItsDocument},
      {"partially closed", {}, {partiallyClosed, 8, {}}, 3, Question::ItsDocument},
      {"no number yet", {}, {1, 7, {}}, 3, Question::OthersDocument},
      {"another's number", 8, {1, 9, {}}, 3, Question::OthersDocument},
      {"another kind", {}, {2, 8, {}}, 3, Question::OthersDocument},
      {"a Z since", {}, {0, 8, 500}, 4, Question::TooLate},
      {"less sold than before", {}, {0, 8, 500}, 3, Question::TooLate},
      {"another machine's counters", {}, {0, 6, 10000}, 3, Question::TooLate},
  };
  for (const auto& row : rows) {
    Entry asked = entry("", "d", cutShort);
    asked.before = {0, 7, 10000};
    asked.lastZ = 3;
    asked.number = row.number;
    EXPECT_EQ(openQuestion(asked, row.now, row.lastZ), row.question) << row.name;
  }
}

}  // namespace zentaro::tools::judging_test
