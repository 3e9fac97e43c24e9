// The rules, in the order in which they decide.
#include "till/books/evidence.h"

namespace zentaro::till {

namespace {

constexpr int openInvoice = 1, openCreditNote = 2, partiallyClosed = 4;

Judgement byLastZ(const Job& job, const Standing& now, const std::optional<State>& otherHolder) {
  if (job.kind == Kind::X || !job.reachedClose) return Judgement::NotPrinted;
  if (!job.before.lastZ || !now.lastZ) return Judgement::BeyondCounters;
  const std::int64_t since = *now.lastZ - *job.before.lastZ;
  if (since == 0) return Judgement::NotPrinted;
  return since == 1 && !otherHolder ? Judgement::Printed : Judgement::BeyondCounters;
}

Judgement byOpenDocument(const Job& job, const Standing& now, const std::optional<State>& otherHolder) {
  const int itsKind = job.kind == Kind::CreditNote ? openCreditNote : openInvoice;
  const bool isItsKind = now.document == itsKind || now.document == partiallyClosed;
  const bool isItsNumber = job.number == now.lastNumber && !otherHolder;
  return isItsKind && isItsNumber ? Judgement::ItsOwnIsOpen : Judgement::AnotherIsOpen;
}

// Nothing was sent behind the opening, or its lines were, but no close.
Judgement withoutClose(const Job& job, const Standing& now, const std::optional<State>& otherHolder,
                       const std::optional<std::int64_t>& growth) {
  if (job.turn == Turn::Open) return Judgement::NotPrinted;
  const bool isLast = now.lastNumber == job.number.value_or(job.before.lastNumber + 1) && !otherHolder;
  const bool mayBeCounted = !growth || *growth == job.net;
  return isLast && mayBeCounted ? Judgement::BeyondCounters : Judgement::NotPrinted;
}

Judgement byCounters(const Job& job, const Standing& now, const std::optional<State>& otherHolder,
                     const std::optional<std::int64_t>& growth) {
  const std::int64_t used = now.lastNumber - job.before.lastNumber;
  if (!growth || job.net == 0) return used == 0 ? Judgement::NotPrinted : Judgement::BeyondCounters;
  if (used > 1) return Judgement::BeyondCounters;
  if (*growth == 0) return Judgement::NotPrinted;
  const bool isItsNumber = !job.number || *job.number == now.lastNumber;
  if (used == 0 || *growth != job.net || !isItsNumber) return Judgement::BeyondCounters;
  if (!otherHolder) return Judgement::Printed;
  return *otherHolder == State::Printed ? Judgement::NotPrinted : Judgement::BeyondCounters;
}

}  // namespace

Judgement judged(const Job& job, const Standing& now, const std::optional<State>& otherHolder) {
  if (job.kind == Kind::X || job.kind == Kind::Z) return byLastZ(job, now, otherHolder);
  if (now.lastNumber < job.before.lastNumber) return Judgement::BeyondCounters;
  if (now.document != 0) return byOpenDocument(job, now, otherHolder);
  if (job.before.lastZ && job.before.lastZ != now.lastZ) {
    const bool usedNoNumber = now.lastNumber == job.before.lastNumber;
    return usedNoNumber && !job.reachedClose ? Judgement::NotPrinted : Judgement::BeyondCounters;
  }
  std::optional<std::int64_t> growth;
  if (job.before.dayAmount && now.dayAmount) growth = *now.dayAmount - *job.before.dayAmount;
  if (growth && *growth < 0) return Judgement::BeyondCounters;
  return job.reachedClose ? byCounters(job, now, otherHolder, growth)
                          : withoutClose(job, now, otherHolder, growth);
}

bool isEvidenceOfToday(const Job& job, const std::optional<std::int64_t>& lastZ) {
  return !job.before.lastZ || !lastZ || *job.before.lastZ == *lastZ;
}

}  // namespace zentaro::till
