// The transitions of a sale.
#include "sale/sale_machine.h"

namespace zentaro::tools {

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

void SaleMachine::sent(Fate fate) {
  const bool isDone = fate == Fate::Done;
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
  if (now.document == 0) return end(judgedBy(now));
  // A partially closed document is paid and can no longer be cancelled.
  tryToEnd(now.document == partiallyClosed ? State::Finishing : State::Cancelling);
}

Verdict SaleMachine::judgedBy(const Counters& now) const {
  const int numbersUsed = now.lastNumber - before_.lastNumber;
  if (!before_.dayNet || !now.dayNet || net_ == 0)
    return numbersUsed == 0 ? Verdict::NotPrinted : Verdict::Unknown;
  const Cents counted = *now.dayNet - *before_.dayNet;
  if (numbersUsed == 1 && counted == net_) return printed();
  return (numbersUsed == 0 || numbersUsed == 1) && counted == 0 ? Verdict::NotPrinted : Verdict::Unknown;
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
