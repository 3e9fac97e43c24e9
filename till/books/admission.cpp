// The rule, and what it asks of the books.
#include "till/books/admission.h"

namespace zentaro::till {

namespace {

bool isSame(const Job& job, const Wish& wish) {
  return job.digest == wish.digest || job.digest == wish.oldDigest;
}

bool isBeingPrinted(const Job& job, const IsBusy& isBusy) {
  return job.state == State::Printing && isBusy(job.before.machine);
}

}  // namespace

// A document that was not printed may have been corrected since.
Ruling ruledById(const std::optional<Job>& job, const Wish& wish, Stage stage, const IsBusy& isBusy) {
  if (!job || job->state == State::NotPrinted) return {};
  if (!isSame(*job, wish)) return {Answer::OtherContent, job};
  if (job->state == State::Printed) return {Answer::AlreadyPrinted, job};
  if (job->state == State::Queued || isBeingPrinted(*job, isBusy)) return {Answer::Busy, job};
  return stage == Stage::BeforePort ? Ruling{} : Ruling{Answer::StillUnknown, job};
}

Ruling ruledByContent(const std::vector<Job>& jobs, const Wish& wish, Stage stage, const IsBusy& isBusy) {
  if (wish.again || stage == Stage::BeforePort) return {};
  for (const Job& job : jobs) {
    if (!isSame(job, wish) || isBeingPrinted(job, isBusy)) continue;
    if (job.state == State::Printed && !job.isTold) return {Answer::PrintedUntold, job};
    if (job.state == State::Printing || job.state == State::Unknown) return {Answer::StillUnknown, job};
  }
  return {};
}

Ruling admitted(const Books& books, const Wish& wish, Stage stage, const IsBusy& isBusy) {
  if (!wish.id.empty()) return ruledById(books.find(wish.id), wish, stage, isBusy);
  if (wish.again || stage == Stage::BeforePort) return {};
  return ruledByContent(books.openWithDigest(wish.digest, wish.oldDigest), wish, stage, isBusy);
}

}  // namespace zentaro::till
