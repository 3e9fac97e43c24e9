// The transitions of a sale.
#include "till/course/sale_machine.h"

namespace zentaro::tools {

Verdict judgedByCounters(const Counters& before, const Counters& now, Cents net) {
  const int numbersUsed = now.lastNumber - before.lastNumber;
  if (!before.dayNet || !now.dayNet || net == 0)
    return numbersUsed == 0 ? Verdict::NotPrinted : Verdict::Unknown;
  const Cents counted = *now.dayNet - *before.dayNet;
  if (numbersUsed == 1 && counted == net) return Verdict::Printed;
  return (numbersUsed == 0 || numbersUsed == 1) && counted == 0 ? Verdict::NotPrinted : Verdict::Unknown;
}

SaleMachine SaleMachine::resumed(const Counters& before, Cents net) {
  SaleMachine machine(0, net);
  machine.before_ = before;
  machine.state_ = State::Judging;
  return machine;
}

Action SaleMachine::next() const {
  switch (state_) {
    case State::Starting:
    case State::Judging: return Action::AskCounters;
    case State::Printing: return Action::SendStep;
    case State::Cancelling: return Action::Cancel;
    case State::Finishing: return Action::Finish;
    case State::Ended: break;
  }
  return Action::Stop;
}

void SaleMachine::interrupt() {
  if (state_ != State::Starting && state_ != State::Printing) return;
  if (state_ == State::Starting || step_ == 0)
    end(Verdict::NotPrinted);
  else
    state_ = State::Judging;
}

void SaleMachine::sent(Fate fate) {
  const bool isDone = fate == Fate::Done;
  wasOpened_ = wasOpened_ || isDone;
  if (state_ == State::Printing && isDone) {
    if (++step_ == steps_) end(Verdict::Printed);
  } else if (state_ == State::Finishing && isDone) {
    end(printed());
  } else {
    state_ = State::Judging;
  }
}

void SaleMachine::counted(const std::optional<Counters>& now) {
  const bool isStart = state_ == State::Starting;
  if (!now)
    end(isStart ? Verdict::Unreachable : Verdict::Unknown);
  else if (isStart)
    start(*now);
  else
    judge(*now);
}

void SaleMachine::start(const Counters& now) {
  if (now.document != 0) return end(Verdict::OpenBefore);
  before_ = now;
  state_ = State::Printing;
}

void SaleMachine::judge(const Counters& now) {
  if (now.document == 0) {
    const Verdict verdict = judgedByCounters(before_, now, net_);
    wasOpened_ = wasOpened_ || now.lastNumber != before_.lastNumber;
    return end(verdict == Verdict::Printed ? printed() : verdict);
  }
  wasOpened_ = true;
  // A partially closed document is paid and can no longer be cancelled.
  tryToEnd(now.document == partiallyClosed ? State::Finishing : State::Cancelling);
}

// Only the definitive close, the last step, may be the one that failed while nothing is missing on the paper.
Verdict SaleMachine::printed() const {
  return step_ + 1 < steps_ ? Verdict::PrintedInPart : Verdict::Printed;
}

// The printer has just said that the document is still open, so this is no blind repetition.
void SaleMachine::tryToEnd(State how) {
  constexpr int mostAttempts = 2;
  if (++attempts_ > mostAttempts)
    return end(how == State::Finishing ? Verdict::StillToBeClosed : Verdict::StillOpen);
  state_ = how;
}

void SaleMachine::end(Verdict verdict) {
  state_ = State::Ended;
  verdict_ = verdict;
}

}  // namespace zentaro::tools
