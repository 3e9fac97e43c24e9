// The transitions of a sale.
#include "till/course/sale_machine.h"

namespace zentaro::till {

SaleMachine SaleMachine::resumed(const Job& job) {
  SaleMachine machine(0, 0, job);
  machine.isResumed_ = true;
  machine.phase_ = Phase::Judging;
  return machine;
}

Action SaleMachine::next() const {
  switch (phase_) {
    case Phase::Starting:
    case Phase::Judging: return Action::AskCounters;
    case Phase::Printing: return Action::SendStep;
    case Phase::Cancelling: return Action::Cancel;
    case Phase::Finishing: return Action::Finish;
    case Phase::Ended: break;
  }
  return Action::Stop;
}

void SaleMachine::interrupt() {
  if (phase_ != Phase::Starting && phase_ != Phase::Printing) return;
  if (phase_ == Phase::Starting || step_ == 0)
    end(Ending::NotPrinted);
  else
    phase_ = Phase::Judging;
}

void SaleMachine::sent(Fate fate) {
  const bool isDone = fate == Fate::Done, isClose = phase_ == Phase::Printing && step_ >= firstClose_;
  wasOpened_ = wasOpened_ || isDone;
  job_.reachedClose = job_.reachedClose || isClose || phase_ == Phase::Finishing;
  job_.turn = phase_ == Phase::Cancelling  ? Turn::Cancel
              : phase_ == Phase::Finishing ? Turn::Finish
              : isClose                    ? Turn::Close
              : step_ == 0 && !isDone      ? Turn::Open
                                           : Turn::Lines;
  if (phase_ == Phase::Printing && isDone) {
    if (++step_ == steps_) end(Ending::Printed);
  } else if (phase_ == Phase::Finishing && isDone) {
    end(printed());
  } else {
    phase_ = Phase::Judging;
  }
}

void SaleMachine::counted(const std::optional<Standing>& now, const std::optional<State>& otherHolder) {
  const bool isStart = phase_ == Phase::Starting;
  if (!now)
    end(isStart ? Ending::Unreachable : Ending::Unknown);
  else if (isStart)
    start(*now);
  else
    judge(*now, otherHolder);
}

void SaleMachine::start(const Standing& now) {
  if (now.document != 0) return end(Ending::OpenBefore);
  job_.before.lastNumber = now.lastNumber;
  job_.before.dayAmount = now.dayAmount;
  job_.before.lastZ = now.lastZ;
  job_.turn = Turn::Open;
  phase_ = Phase::Printing;
}

void SaleMachine::judge(const Standing& now, const std::optional<State>& otherHolder) {
  judgement_ = judged(job_, now, otherHolder);
  if (judgement_ == Judgement::AnotherIsOpen && isItsOwn(now, otherHolder))
    judgement_ = Judgement::ItsOwnIsOpen;
  wasOpened_ = wasOpened_ || judgement_ == Judgement::ItsOwnIsOpen ||
               (now.document == 0 && now.lastNumber != job_.before.lastNumber);
  switch (*judgement_) {
    case Judgement::Printed:
      job_.number = job_.kind == Kind::Z ? now.lastZ : now.lastNumber;
      return end(printed());
    case Judgement::NotPrinted: return end(Ending::NotPrinted);
    case Judgement::BeyondCounters: return end(Ending::Unknown);
    case Judgement::AnotherIsOpen: return end(isResumed_ ? Ending::OpenBefore : Ending::Unknown);
    case Judgement::ItsOwnIsOpen:
      return tryToEnd(now.document == partiallyClosed ? Phase::Finishing : Phase::Cancelling);
  }
}

// Whoever has just opened a document, and had the machine alone since, knows it for its own also when the answer to
// the opening was lost, and on a printer that gives the number at the close only.
bool SaleMachine::isItsOwn(const Standing& now, const std::optional<State>& otherHolder) const {
  const int itsKind = job_.kind == Kind::CreditNote ? 2 : 1;
  if (isResumed_ || (now.document != itsKind && now.document != partiallyClosed)) return false;
  if (job_.number) return now.lastNumber == *job_.number;
  const std::int64_t since = now.lastNumber - job_.before.lastNumber;
  return since == 0 || (since == 1 && !otherHolder);
}

// Only the definitive close, the last step, may be the one that failed while nothing is missing on the paper.
Ending SaleMachine::printed() const { return step_ + 1 < steps_ ? Ending::PrintedInPart : Ending::Printed; }

// The printer has just said that the document is still open, so this is no blind repetition.
void SaleMachine::tryToEnd(Phase how) {
  constexpr int mostAttempts = 2;
  if (++attempts_ > mostAttempts)
    return end(how == Phase::Finishing ? Ending::StillToBeClosed : Ending::StillOpen);
  phase_ = how;
}

void SaleMachine::end(Ending ending) {
  phase_ = Phase::Ended;
  ending_ = ending;
}

}  // namespace zentaro::till
