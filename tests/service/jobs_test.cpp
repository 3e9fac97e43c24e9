// The rules of the service that need neither clock nor printer.
#include <gtest/gtest.h>

#include "service/jobs/put.h"
#include "service/jobs/queue.h"
#include "service/workers/aftermath.h"

namespace zentaro::service {
namespace {

using till::State;

till::Job known(State state, int attempt) {
  till::Job job;
  job.state = state;
  job.attempt = attempt;
  job.digest = "apples";
  job.printer = "caja1";
  return job;
}

TEST(Put, TheSameAgainNeverPrintsTwice) {
  constexpr Ruling accept = Ruling::Accept, same = Ruling::Known, ahead = Ruling::AttemptAhead,
                   notFinal = Ruling::NotFinal, other = Ruling::OtherContent;
  const Wish apples{0, "apples", "caja1"}, pears{0, "pears", "caja1"}, elsewhere{0, "apples", "caja2"};
  struct Row {
    const char* what;
    State state;
    const Wish& wish;
    Ruling earlier, now, next, later;  // for an attempt below, at, one above and two above the job's
  };
  const Row rows[]{
      {"queued", State::Queued, apples, same, same, notFinal, notFinal},
      {"printing", State::Printing, apples, same, same, notFinal, notFinal},
      {"unknown", State::Unknown, apples, same, same, notFinal, notFinal},
      {"printed", State::Printed, apples, same, same, same, same},
      {"not printed", State::NotPrinted, apples, same, same, accept, ahead},
      {"queued, other content", State::Queued, pears, same, other, other, other},
      {"printing, other content", State::Printing, pears, same, other, other, other},
      {"unknown, other content", State::Unknown, pears, same, other, other, other},
      {"printed, other content", State::Printed, pears, same, other, other, other},
      {"not printed, other content", State::NotPrinted, pears, same, other, accept, ahead},
      {"queued, other printer", State::Queued, elsewhere, same, other, notFinal, notFinal},
      {"unknown, other printer", State::Unknown, elsewhere, same, other, notFinal, notFinal},
      {"printed, other printer", State::Printed, elsewhere, same, other, same, same},
      {"not printed, other printer", State::NotPrinted, elsewhere, same, other, accept, ahead},
  };
  for (const Row& row : rows) {
    const auto of = [&](int attempt) {
      return rule(known(row.state, 2), {attempt, row.wish.digest, row.wish.printer});
    };
    EXPECT_EQ(of(1), row.earlier) << row.what;
    EXPECT_EQ(of(2), row.now) << row.what;
    EXPECT_EQ(of(3), row.next) << row.what;
    EXPECT_EQ(of(4), row.later) << row.what;
  }
  EXPECT_EQ(rule(std::nullopt, {1, "apples", "caja1"}), accept);
  EXPECT_EQ(rule(std::nullopt, {2, "apples", "caja1"}), ahead) << "an attempt without a first one";
}

TEST(Patience, OnlyTheComputersOwnTimeKeepsAJobAlive) {
  till::Job job;
  job.boot = "b";
  job.uptime = 100;
  job.patience = std::chrono::seconds{60};
  EXPECT_FALSE(isExpired(job, {"b", 100}));
  EXPECT_FALSE(isExpired(job, {"b", 159}));
  EXPECT_TRUE(isExpired(job, {"b", 160}));
  EXPECT_TRUE(isExpired(job, {"b", 99})) << "before its acceptance";
  EXPECT_TRUE(isExpired(job, {"c", 101})) << "the computer was started again";
  job.boot.clear();
  EXPECT_TRUE(isExpired(job, {"c", 101})) << "nobody knows when it was accepted";
}

TEST(Queue, WhatWasRefusedHoldsBackSalesAndNoClosing) {
  const Waiting sale, closing{true, false, false, true}, held{true, true, false, true};
  const Waiting refused{false, false, true, false}, due{false, false, true, true};
  const Waiting refusedClosing{true, false, true, false};
  struct Row {
    const char* what;
    std::vector<Waiting> queue;
    std::optional<std::size_t> next;
  };
  const Row rows[]{
      {"nothing waits", {}, std::nullopt},
      {"the first", {sale, sale}, 0},
      {"a closing has no precedence", {sale, closing}, 0},
      {"refused a moment ago", {refused, sale}, std::nullopt},
      {"refused, to be tried again", {due, sale}, 0},
      {"the Z that is due goes before the refused sale", {refused, sale, closing}, 2},
      {"and before it is tried again", {due, sale, closing}, 2},
      {"a Z that was refused itself has its own time", {refused, refusedClosing}, std::nullopt},
      {"and does not keep the sale from its own", {due, refusedClosing}, 0},
      {"a held Z holds back nobody", {held, sale}, 1},
      {"a held Z alone", {held}, std::nullopt},
      {"a held Z behind a refused sale", {refused, held}, std::nullopt},
  };
  for (const Row& row : rows) EXPECT_EQ(pick(row.queue), row.next) << row.what;
}

TEST(Aftermath, WhatMayHaveBeenOpenedIsNeverBegunAgain) {
  using till::Ending;
  using Kind = till::Cause::Kind;
  struct Row {
    const char* what;
    Ending ending;
    Kind cause;
    bool wasOpened, isBegun;
    Aftermath aftermath;
  };
  const Row rows[]{
      {"printed", Ending::Printed, Kind::None, true, false, Aftermath::Ended},
      {"unknown", Ending::Unknown, Kind::Silent, true, false, Aftermath::Ended},
      {"still open", Ending::StillOpen, Kind::Refused, true, false, Aftermath::Ended},
      {"cancelled", Ending::NotPrinted, Kind::Refused, true, false, Aftermath::Ended},
      {"cancelled, because the books are full", Ending::NotPrinted, Kind::Books, true, true,
       Aftermath::Ended},
      {"refused at the opening", Ending::NotPrinted, Kind::Refused, false, true, Aftermath::Waits},
      {"the opening's answer lost", Ending::NotPrinted, Kind::Lost, false, true, Aftermath::NotPrinted},
      {"books that cannot be written before it", Ending::NotPrinted, Kind::Books, false, false,
       Aftermath::Waits},
      {"somebody else's document", Ending::OpenBefore, Kind::None, false, false, Aftermath::Waits},
      {"a printer that is off", Ending::Unreachable, Kind::Silent, false, false, Aftermath::Waits},
      {"a machine in use", Ending::Busy, Kind::None, false, false, Aftermath::Waits},
  };
  for (const Row& row : rows)
    EXPECT_EQ(aftermathOf(row.ending, row.cause, row.wasOpened, row.isBegun), row.aftermath) << row.what;
}

}  // namespace
}  // namespace zentaro::service
