// The loop around the machine.
#include "till/course/print_sale.h"

#include <algorithm>

#include "base/terminal/language.h"

namespace zentaro::till {

using terminal::say;

namespace {

class Carrier {
 public:
  Carrier(const std::vector<SaleStep>& steps, const SaleMachine& machine, SalePrinter& printer,
          Keeper& keeper, Observer& observer)
      : steps_(steps), printer_(printer), keeper_(keeper), observer_(observer), machine_(machine) {}

  Verdict carry(const Stop& stop, const std::string& machine) {
    while (machine_.next() != Action::Stop) {
      if (stop.isWanted && stop.isWanted())
        interrupt(
            {Cause::Kind::Stopped, stop.cause.empty() ? say("interrumpido", "interrupted") : stop.cause, {}});
      announce(machine_.next(), machine);
      take(machine_.next());
    }
    verdict_.ending = refusal_.value_or(machine_.ending());
    verdict_.wasOpened = machine_.wasOpened();
    if (isPrinted(verdict_.ending)) takeNumber();
    return verdict_;
  }

  bool isBeyondCounters() const { return machine_.isBeyondCounters(); }
  bool endsDocument() const { return endsDocument_; }

 private:
  void interrupt(Cause cause) {
    keepCause(std::move(cause));
    machine_.interrupt();
  }

  // Writes down what is about to be sent; what cannot be written may not be sent.
  void announce(Action action, const std::string& machine) {
    if (action == Action::Cancel) keeper_.ending(Turn::Cancel);
    if (action == Action::Finish) keeper_.ending(Turn::Finish);
    if (action != Action::SendStep) return;
    const SaleStep::Kind kind = steps_[machine_.step()].kind;
    Cause cause;
    if (kind == SaleStep::Kind::Close && !keeper_.closing(cause)) return interrupt(std::move(cause));
    if (kind != SaleStep::Kind::Open) return;
    Evidence before = machine_.job().before;
    before.machine = machine;
    refusal_ = keeper_.opening(before, cause);
    if (refusal_) interrupt(std::move(cause));
  }

  void take(Action action) {
    switch (action) {
      case Action::AskCounters: return askCounters();
      case Action::SendStep: return sendStep();
      case Action::Cancel:
        return end(say("anular el documento", "cancel the document"), [&] { return printer_.cancel(); });
      case Action::Finish:
        return end(say("cerrar el documento parcialmente cerrado", "close the partially closed document"),
                   [&] { return printer_.finish(); });
      case Action::Stop: break;
    }
  }

  void askCounters() {
    observer_.asksForCounters();
    const std::optional<Standing> standing = printer_.counters();
    const std::string trouble = standing ? std::string() : printer_.trouble();
    observer_.counters(standing, trouble);
    if (!standing) keepCause({Cause::Kind::Silent, say("contadores: ", "counters: ") + trouble, {}});
    machine_.counted(standing, standing ? otherHolder(*standing) : std::nullopt);
  }

  // A closing bears the number of its Z.
  std::optional<State> otherHolder(const Standing& standing) const {
    if (!isDayReport(machine_.job().kind)) return keeper_.otherHolder(standing.lastNumber);
    return standing.lastZ ? keeper_.otherHolder(*standing.lastZ) : std::nullopt;
  }

  void sendStep() {
    const SaleStep& step = steps_[machine_.step()];
    send({machine_.step() + 1, steps_.size(), step.label}, [&] { return printer_.send(step); });
    if (step.kind == SaleStep::Kind::Open && machine_.next() == Action::SendStep) takeOpened();
  }

  // Required: the number is in the books before the first line. After a death only the document that bears it is
  // ended. A number that was the last one before is another document's.
  void takeOpened() {
    std::optional<std::int64_t> number = printer_.openedNumber();
    if (!number && keeper_.job()) number = printer_.lastNumber();
    if (number && *number <= machine_.job().before.lastNumber) number.reset();
    machine_.opened(number);
    Cause cause;
    if (!keeper_.opened(number, cause)) interrupt(std::move(cause));
  }

  template <class Send>
  void end(std::string_view label, const Send& transmit) {
    endsDocument_ = true;
    send({0, 0, std::string(label)}, transmit);
  }

  template <class Send>
  void send(const StepPlace& place, const Send& transmit) {
    observer_.begins(place);
    const Reply reply = transmit();
    observer_.ended(reply);
    if (reply.fate != Fate::Done)
      keepCause({reply.fate == Fate::Lost ? Cause::Kind::Lost : Cause::Kind::Refused,
                 place.label + ": " + reply.text, reply.printer});
    machine_.sent(reply.fate);
  }

  void keepCause(Cause cause) {
    if (verdict_.cause.kind == Cause::Kind::None) verdict_.cause = std::move(cause);
  }

  void takeNumber() {
    if (isDayReport(machine_.job().kind)) {
      verdict_.number = machine_.job().number;
      if (!verdict_.number && machine_.job().kind == Kind::Z) verdict_.number = printer_.lastNumber();
      return;
    }
    verdict_.receipt = printer_.receipt();
    verdict_.number = printer_.lastNumber();
    if (!verdict_.number && verdict_.receipt) verdict_.number = verdict_.receipt->number;
    if (!verdict_.number) verdict_.number = machine_.job().number;
  }

  const std::vector<SaleStep>& steps_;
  SalePrinter& printer_;
  Keeper& keeper_;
  Observer& observer_;
  SaleMachine machine_;
  std::optional<Ending> refusal_;
  bool endsDocument_ = false;
  Verdict verdict_;
};

Outcome outcomeOf(const Verdict& verdict, bool isBeyondCounters) {
  Outcome outcome;
  outcome.state = stateOf(verdict.ending);
  outcome.verdict = nameOf(verdict.ending);
  outcome.number = verdict.number;
  outcome.cause = verdict.cause.text;
  outcome.isBeyondCounters = outcome.state == State::Unknown && isBeyondCounters;
  return outcome;
}

}  // namespace

Verdict printSale(const std::vector<SaleStep>& steps, const Order& order, const std::string& machine,
                  SalePrinter& printer, Keeper& keeper, Observer& observer, const Stop& stop) {
  Job job;
  static_cast<Order&>(job) = order;
  const auto firstClose = std::ranges::find(steps, SaleStep::Kind::Close, &SaleStep::kind) - steps.begin();
  // The one step of a closing is all of it.
  const std::size_t counting = isDayReport(order.kind) ? 0 : static_cast<std::size_t>(firstClose);
  const SaleMachine course(steps.size(), counting, job);
  Carrier carrier(steps, course, printer, keeper, observer);
  Verdict verdict = carrier.carry(stop, machine);
  // What waited in the books and was refused before it was opened may wait on: its owner knows.
  const bool mayWaitOn = keeper.cameFromQueue() && verdict.ending == Ending::NotPrinted && !verdict.wasOpened;
  if (!mayWaitOn) {
    Outcome outcome = outcomeOf(verdict, carrier.isBeyondCounters());
    outcome.result = keeper.resultOf(verdict);
    keeper.finish(outcome);
  }
  verdict.job = keeper.job();
  return verdict;
}

Verdict settleJob(const Job& job, SalePrinter& printer, Keeper& keeper, Observer& observer) {
  const std::vector<SaleStep> none;
  Carrier carrier(none, SaleMachine::resumed(job), printer, keeper, observer);
  Verdict verdict = carrier.carry({}, {});
  if (verdict.ending == Ending::OpenBefore) return verdict;
  const Outcome outcome = outcomeOf(verdict, carrier.isBeyondCounters());
  const bool isNews = outcome.state != job.state || outcome.isBeyondCounters != job.isBeyondCounters;
  if (isNews) keeper.finish(outcome);
  verdict.job = keeper.job();
  return verdict;
}

}  // namespace zentaro::till
