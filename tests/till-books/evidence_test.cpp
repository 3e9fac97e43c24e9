// What the counters say about jobs that were cut short. Each began with the number 7, 100.00 sold
// and the Z 3, and sells 10.00.
#include "till/books/evidence.h"

#include <gtest/gtest.h>

namespace zentaro::till::evidence_test {

using enum Judgement;
constexpr auto nobody = std::nullopt;

Job cutShort(Kind kind, Turn turn, bool reachedClose, std::optional<std::int64_t> number) {
  Job job;
  job.kind = kind;
  job.turn = turn;
  job.reachedClose = reachedClose;
  job.number = number;
  job.net = 1000;
  job.before = {"A1", 7, 10000, 3};
  return job;
}

TEST(Evidence, JudgesOnlyWhatCanHaveBeenCounted) {
  const Job opening = cutShort(Kind::Invoice, Turn::Open, false, nobody);
  const Job lines = cutShort(Kind::Invoice, Turn::Lines, false, 8);
  const Job noNumber = cutShort(Kind::Invoice, Turn::Lines, false, nobody);
  const Job closing = cutShort(Kind::Invoice, Turn::Close, true, 8);
  const Job cancelled = cutShort(Kind::Invoice, Turn::Cancel, true, 8);
  const Job creditNote = cutShort(Kind::CreditNote, Turn::Lines, false, 8);
  const Job otherNumber = cutShort(Kind::Invoice, Turn::Close, true, 9);
  Job gift = closing, blind = closing;
  gift.net = 0;
  blind.before.dayAmount = nobody;
  const Job x = cutShort(Kind::X, Turn::Close, true, nobody),
            z = cutShort(Kind::Z, Turn::Close, true, nobody);
  struct {
    const char* name;
    Job job;
    Standing now;
    std::optional<State> otherHolder;
    Judgement judgement;
  } const rows[] = {
      {"opening, nothing came of it", opening, {0, 7, 10000, 3}, nobody, NotPrinted},
      {"opening, then another sold the same", opening, {0, 8, 11000, 3}, nobody, NotPrinted},
      {"opening, a document is open", opening, {1, 8, nobody, 3}, nobody, AnotherIsOpen},
      {"lines, cancelled by the printer", lines, {0, 8, 10000, 3}, nobody, NotPrinted},
      {"lines, closed by hand", lines, {0, 8, 11000, 3}, nobody, BeyondCounters},
      {"lines, another till has the number", lines, {0, 8, 11000, 3}, State::Printed, NotPrinted},
      {"lines, another program sold the same", lines, {0, 9, 11000, 3}, nobody, NotPrinted},
      {"lines, another amount was sold", lines, {0, 8, 12000, 3}, nobody, NotPrinted},
      {"lines, the day is not to be had", lines, {0, 8, nobody, 3}, nobody, BeyondCounters},
      {"lines without number, closed by hand", noNumber, {0, 8, 11000, 3}, nobody, BeyondCounters},
      {"lines without number, nothing sold", noNumber, {0, 8, 10000, 3}, nobody, NotPrinted},
      {"lines, its document is open", lines, {1, 8, nobody, 3}, nobody, ItsOwnIsOpen},
      {"lines, somebody closed it partially", lines, {4, 8, nobody, 3}, nobody, ItsOwnIsOpen},
      {"lines, another number is open", lines, {1, 9, nobody, 3}, nobody, AnotherIsOpen},
      {"lines, another has the open number", lines, {1, 8, nobody, 3}, State::Unknown, AnotherIsOpen},
      {"lines, another kind is open", lines, {2, 8, nobody, 3}, nobody, AnotherIsOpen},
      {"lines without number, one is open", noNumber, {1, 8, nobody, 3}, nobody, AnotherIsOpen},
      {"a credit note of its own is open", creditNote, {2, 8, nobody, 3}, nobody, ItsOwnIsOpen},
      {"close, counted", closing, {0, 8, 11000, 3}, nobody, Printed},
      {"close, counted, then cancelled in vain", cancelled, {0, 8, 11000, 3}, nobody, Printed},
      {"close, counted under another number", otherNumber, {0, 8, 11000, 3}, nobody, BeyondCounters},
      {"close, not counted", closing, {0, 8, 10000, 3}, nobody, NotPrinted},
      {"close, no number used", closing, {0, 7, 10000, 3}, nobody, NotPrinted},
      {"close, another amount", closing, {0, 8, 12000, 3}, nobody, BeyondCounters},
      {"close, one more document since", closing, {0, 9, 11000, 3}, nobody, BeyondCounters},
      {"close, the number is another's", closing, {0, 8, 11000, 3}, State::Printed, NotPrinted},
      {"close, another had the number in vain", closing, {0, 8, 11000, 3}, State::Unknown, BeyondCounters},
      {"close, less sold than before", closing, {0, 8, 500, 3}, nobody, BeyondCounters},
      {"close, lower numbers than before", closing, {0, 6, 10000, 3}, nobody, BeyondCounters},
      {"close, a Z since", closing, {0, 8, 11000, 4}, nobody, BeyondCounters},
      {"close, the last Z is not to be had", closing, {0, 8, 11000, nobody}, nobody, BeyondCounters},
      {"lines, a Z since", lines, {0, 8, 0, 4}, nobody, BeyondCounters},
      {"lines, a Z since, no number used", lines, {0, 7, 0, 4}, nobody, NotPrinted},
      {"a sale of nothing", gift, {0, 8, 10000, 3}, nobody, BeyondCounters},
      {"a sale of nothing, no number used", gift, {0, 7, 10000, 3}, nobody, NotPrinted},
      {"no day before", blind, {0, 8, 11000, 3}, nobody, BeyondCounters},
      {"no day before, no number used", blind, {0, 7, 10000, 3}, nobody, NotPrinted},
      {"X", x, {0, 7, 10000, 3}, nobody, NotPrinted},
      {"Z, made", z, {0, 7, 0, 4}, nobody, Printed},
      {"Z, not made", z, {0, 7, 10000, 3}, nobody, NotPrinted},
      {"Z, two since", z, {0, 7, 0, 5}, nobody, BeyondCounters},
      {"Z, another's", z, {0, 7, 0, 4}, State::Printed, BeyondCounters},
  };
  for (const auto& row : rows)
    EXPECT_EQ(judged(row.job, row.now, row.otherHolder), row.judgement) << row.name;
}

TEST(Evidence, KeepsAZFromTakingOnlyWhatIsLeft) {
  Job job = cutShort(Kind::Invoice, Turn::Close, true, 8);
  EXPECT_TRUE(isEvidenceOfToday(job, 3));
  EXPECT_FALSE(isEvidenceOfToday(job, 4));
  EXPECT_TRUE(isEvidenceOfToday(job, nobody)) << "the printer does not say";
  job.before.lastZ = nobody;
  EXPECT_TRUE(isEvidenceOfToday(job, 4)) << "nobody knows its day";
}

}  // namespace zentaro::till::evidence_test
