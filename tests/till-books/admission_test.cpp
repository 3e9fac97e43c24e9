// What the books answer to somebody who wants a sale printed. The wish has the digest 2:d, by the old rule 1:d.
#include "till/books/admission.h"

#include <gtest/gtest.h>

namespace zentaro::till::admission_test {

using enum Answer;

Job job(State state, const char* digest = "2:d", const char* machine = "A1", bool isTold = true) {
  Job made;
  made.state = state;
  made.digest = digest;
  made.before.machine = machine;
  made.isTold = isTold;
  return made;
}

bool isBusy(const std::string& machine) { return machine == "B1"; }

TEST(Admission, GoesByTheId) {
  struct {
    const char* name;
    std::optional<Job> known;
    Answer beforePort, beforeOpening;
  } const rows[] = {
      {"nothing known", {}, Print, Print},
      {"printed", job(State::Printed), AlreadyPrinted, AlreadyPrinted},
      {"printed, read from an old journal", job(State::Printed, "1:d"), AlreadyPrinted, AlreadyPrinted},
      {"printed, another content", job(State::Printed, "2:e"), OtherContent, OtherContent},
      {"not printed", job(State::NotPrinted), Print, Print},
      {"not printed, corrected since", job(State::NotPrinted, "2:e"), Print, Print},
      {"queued", job(State::Queued), Busy, Busy},
      {"queued, another content", job(State::Queued, "2:e"), OtherContent, OtherContent},
      {"being printed", job(State::Printing, "2:d", "B1"), Busy, Busy},
      {"cut short", job(State::Printing), Print, StillUnknown},
      {"unknown", job(State::Unknown), Print, StillUnknown},
      {"unknown, somebody else is at its machine", job(State::Unknown, "2:d", "B1"), Print, StillUnknown},
      {"unknown, another content", job(State::Unknown, "2:e"), OtherContent, OtherContent},
  };
  for (const auto& row : rows) {
    const Wish wish{"K", "2:d", "1:d", true};
    EXPECT_EQ(ruledById(row.known, wish, Stage::BeforePort, isBusy).answer, row.beforePort) << row.name;
    EXPECT_EQ(ruledById(row.known, wish, Stage::BeforeOpening, isBusy).answer, row.beforeOpening) << row.name;
  }
}

TEST(Admission, WithoutAnIdGoesByTheContent) {
  struct {
    const char* name;
    std::vector<Job> known;
    Answer answer, again;
  } const rows[] = {
      {"nothing known", {}, Print, Print},
      {"two coffees", {job(State::Printed)}, Print, Print},
      {"nobody was told", {job(State::Printed, "2:d", "A1", false)}, PrintedUntold, Print},
      {"nobody was told, an old journal's", {job(State::Printed, "1:d", "A1", false)}, PrintedUntold, Print},
      {"unknown", {job(State::Unknown)}, StillUnknown, Print},
      {"cut short", {job(State::Printing)}, StillUnknown, Print},
      {"another till sells the same now", {job(State::Printing, "2:d", "B1")}, Print, Print},
      {"another content is unknown", {job(State::Unknown, "2:e")}, Print, Print},
      {"not printed, then unknown", {job(State::NotPrinted), job(State::Unknown)}, StillUnknown, Print},
  };
  for (const auto& row : rows)
    for (const bool again : {false, true}) {
      const Wish wish{"", "2:d", "1:d", again};
      EXPECT_EQ(ruledByContent(row.known, wish, Stage::BeforePort, isBusy).answer, Print) << row.name;
      EXPECT_EQ(ruledByContent(row.known, wish, Stage::BeforeOpening, isBusy).answer,
                again ? row.again : row.answer)
          << row.name;
    }
}

}  // namespace zentaro::till::admission_test
