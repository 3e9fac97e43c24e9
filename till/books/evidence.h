// What a machine's counters say about a job that was cut short, without printer or books.
//
// Only a job that reached its close can have been counted by its own hand. One that never did was not printed, but
// for one case: its document is the last one and the day grew by its net, so somebody closed it by hand. A number
// that another job has is nobody else's. A Z since then has taken the day's amounts away.
#pragma once

#include "till/books/job.h"

namespace zentaro::till {

/// What the machine says of itself now; number and amount are those of the job's kind.
struct Standing {
  int document = 0;  // the state of the open document; 0: none
  std::int64_t lastNumber = 0;
  std::optional<std::int64_t> dayAmount;  // not known while a document is open
  std::optional<std::int64_t> lastZ;
};

enum class Judgement {
  Printed,  // as the last number; a Z as its last
  NotPrinted,
  BeyondCounters,  // a person has to look at the paper, whatever the counters say later
  ItsOwnIsOpen,    // its document is to be ended first, then it is judged again
  AnotherIsOpen    // it can be judged when that is ended
};

/// `otherHolder` is Books::otherHolder() of the last number. The machine is the job's, and nobody prints it now.
Judgement judged(const Job& job, const Standing& now, const std::optional<State>& otherHolder);

/// Whether a Z would take away what may still tell what became of the job; `lastZ` is that of its machine now. Once the
/// job's own day is over there is nothing left to take.
bool isEvidenceOfToday(const Job& job, const std::optional<std::int64_t>& lastZ);

}  // namespace zentaro::till
