// Journals of lines that are read into the books, among them cut, hostile and growing ones.
#include "till/books/old_journal.h"

#include <gtest/gtest.h>

#include "support/scratch.h"

namespace zentaro::till::old_journal_test {

std::string line(const std::string& name, const std::string& id, const std::string& rest) {
  return R"({"name":")" + name + R"(","at":1700000000,"process":"1:2","id":")" + id +
         R"(","content":"e309e2f5f02c514c","device":"COM1","machine":"A1","creditNote":false,"net":1000,)" +
         R"("total":1160,"numberBefore":7,"dayBefore":5000,"lastZ":3,)" + rest + "}\n";
}
const std::string printed = R"("turn":"close","number":8,"fact":"printed","told":true)",
                  notPrinted = R"("turn":"cancel","number":null,"fact":"not-printed","told":true)",
                  cutShort = R"("turn":"lines","number":8,"fact":null,"told":false)",
                  closing = R"("turn":"close","number":8,"fact":null,"told":false)",
                  unknown = R"("turn":"close","number":null,"fact":"unknown","told":true)";

class OldJournal : public ::testing::Test {
 protected:
  void read(const std::string& text) {
    folder_.write("sales.jsonl", text);
    readOldJournal(books_, folder_ / "sales.jsonl");
  }
  std::size_t count() const { return books_.latest(1000).size(); }

  testing::Scratch folder_;
  Books books_{folder_ / "books.db"};
};

TEST_F(OldJournal, BecomesJobsOnce) {
  const std::string text = line("a", "K", notPrinted) + line("b", "K", printed) + line("c", "", cutShort) +
                           line("d", "\xEF\xBF\xBD-1", unknown) + "half a li\n" + R"({"name": )";
  for (int time = 0; time < 2; ++time) {
    read(text);
    books_.remember("journal " + (folder_ / "sales.jsonl").string(), "of another moment");
    EXPECT_EQ(count(), 3U);
  }
  const Job job = *books_.find("K");
  EXPECT_EQ(job.state, State::Printed);
  EXPECT_EQ(job.attempt, 2);
  EXPECT_EQ(job.number, 8);
  EXPECT_EQ(job.digest, "1:e309e2f5f02c514c");
  EXPECT_EQ(job.before.dayAmount, 5000);
  EXPECT_EQ(job.total, 1160);
  EXPECT_TRUE(job.isTold);
  EXPECT_EQ(books_.find("\xEF\xBF\xBD-1")->state, State::Unknown) << "an id outside the alphabet stays";
  const std::vector<Job> open = books_.judgeable("A1");
  ASSERT_EQ(open.size(), 2U);
  EXPECT_EQ(open[0].turn, Turn::Lines);
  read(line("e", "N", R"("turn":"close","number":8,"fact":"printed","told":false)"));
  EXPECT_FALSE(books_.find("N")->isTold) << "nobody was told that it was printed";
  EXPECT_FALSE(open[0].reachedClose);
}

TEST_F(OldJournal, IsFollowedWhileAnOldProgramWritesOn) {
  read(line("a", "K", cutShort));
  EXPECT_EQ(books_.find("K")->state, State::Printing);
  read(line("a", "K", cutShort) + line("a", "K", closing));
  EXPECT_TRUE(books_.find("K")->reachedClose);
  read(line("a", "K", cutShort) + line("a", "K", closing) + line("a", "K", printed));
  EXPECT_EQ(books_.find("K")->state, State::Printed);
  read(line("a", "K", notPrinted) + line("b", "L", printed));
  EXPECT_EQ(books_.find("K")->state, State::Printed) << "what is known is not unlearned";
  EXPECT_EQ(count(), 2U);
}

TEST_F(OldJournal, NeverMakesAPrintedIdLookOtherwise) {
  struct {
    const char *name, *first, *second;
    State state;
  } const rows[] = {
      {"another account's, not printed", "printed", "not-printed", State::Printed},
      {"another account's, unknown", "printed", "unknown", State::Printed},
      {"printed later", "unknown", "printed", State::Printed},
      {"unknown before", "unknown", "not-printed", State::Unknown},
      {"unknown later", "not-printed", "unknown", State::Unknown},
  };
  for (const auto& row : rows) {
    const std::string id = std::to_string(&row - rows);
    const auto rest = [](const std::string& fact) {
      return fact == "printed" ? printed : fact == "unknown" ? unknown : notPrinted;
    };
    read(line("x" + id, id, rest(row.first)));
    read(line("y" + id, id, rest(row.second)));
    EXPECT_EQ(books_.find(id)->state, row.state) << row.name;
    Job other;
    other.before.machine = "A1";
    EXPECT_EQ(books_.otherHolder(other, 8).has_value(), true) << row.name;
  }
}

TEST_F(OldJournal, ThatCannotBeReadIsNotTakenForNone) {
  std::filesystem::create_directory(folder_ / "sales.jsonl");
  EXPECT_THROW(readOldJournal(books_, folder_ / "sales.jsonl"), BooksError);
  EXPECT_NO_THROW(readOldJournal(books_, folder_ / "none"));
}

TEST_F(OldJournal, OfAnAttackerChangesNothingElse) {
  const char* const values[] = {"1e999", "-9223372036854775808", "18446744073709551616", "{}", "\"x\"", "1.5",
                                "[]"};
  std::string text;
  for (const char* value : values)
    for (const char* member :
         {"numberBefore", "dayBefore", "lastZ", "net", "total", "at", "fact", "machine", "turn"})
      text += R"({"name":")" + std::string(member) + std::to_string(text.size()) +
              R"(","id":"","content":"d",")" + member + "\":" + value + ",\"number\":" + value + "}\n";
  read(text + "[" + std::string(100000, '[') + "\n" + line("a", "K", printed));
  EXPECT_EQ(books_.find("K")->state, State::Printed);
  EXPECT_GT(count(), 50U);
  EXPECT_NO_THROW(books_.judgeable(""));
}

}  // namespace zentaro::till::old_journal_test
