// The loop around the machine.
#include "till/course/print_sale.h"

#include <iomanip>
#include <ostream>

#include "base/terminal/harmless.h"
#include "base/terminal/language.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

class Carrier {
 public:
  Carrier(const std::vector<SaleStep>& steps, const SaleMachine& machine, SalePrinter& printer,
          std::ostream& progress, SaleWitness* witness)
      : steps_(steps), printer_(printer), progress_(progress), witness_(witness), machine_(machine) {}

  SaleEnd carry(const std::function<bool()>& isInterrupted) {
    while (machine_.next() != Action::Stop) {
      if (isInterrupted()) stop(std::string(say("interrumpido por una señal", "interrupted by a signal")));
      announce(machine_.next());
      take(machine_.next());
    }
    end_.verdict = machine_.verdict();
    end_.wasOpened = machine_.wasOpened();
    if (end_.verdict == Verdict::Printed || end_.verdict == Verdict::PrintedInPart) takeNumber();
    return end_;
  }

 private:
  void stop(std::string reason) {
    keepReason(std::move(reason));
    machine_.interrupt();
  }

  // Tells the witness what is about to be sent; it may object to the opening.
  void announce(Action action) {
    if (witness_ == nullptr) return;
    if (action == Action::Cancel) witness_->turned("cancel");
    if (action == Action::Finish) witness_->turned("finish");
    if (action != Action::SendStep) return;
    if (steps_[machine_.step()].kind == SaleStep::Kind::Close) witness_->turned("close");
    if (steps_[machine_.step()].kind != SaleStep::Kind::Open) return;
    if (std::string objection = witness_->opening(machine_.before()); !objection.empty())
      stop(std::move(objection));
  }

  void take(Action action) {
    switch (action) {
      case Action::AskCounters: return askCounters();
      case Action::SendStep: return sendStep();
      case Action::Cancel:
        return send(say("anular el documento", "cancel the document"), [&] { return printer_.cancel(); });
      case Action::Finish:
        return send(say("cerrar el documento parcialmente cerrado", "close the partially closed document"),
                    [&] { return printer_.finish(); });
      case Action::Stop: break;
    }
  }

  void askCounters() {
    progress_ << "  --  " << say("contadores", "counters") << std::endl;
    const std::optional<Counters> counters = printer_.counters();
    if (!counters) {
      progress_ << "  --  " << say("ninguno, ", "none, ") << harmless(printer_.trouble()) << std::endl;
      keepReason(say("contadores: ", "counters: ", {}) + printer_.trouble());
    } else {
      progress_ << "  --  " << say("último número ", "last number ") << counters->lastNumber
                << (counters->document == 0 ? say(", ningún documento abierto", ", no document open")
                                            : say(", hay un documento abierto", ", a document is open"))
                << std::endl;
    }
    machine_.counted(counters);
  }

  void sendStep() {
    const SaleStep& step = steps_[machine_.step()];
    const std::string number = std::to_string(machine_.step() + 1) + "/" + std::to_string(steps_.size());
    progress_ << std::setw(7) << number << "  ";
    send(step.label, [&] { return printer_.send(step); });
    if (step.kind == SaleStep::Kind::Open && machine_.next() == Action::SendStep && witness_ != nullptr)
      witness_->opened(printer_.openedNumber());
  }

  /// The label stands there before the wait.
  template <class Send>
  void send(std::string_view label, const Send& transmit) {
    progress_ << harmless(label) << ": " << std::flush;
    const Reply reply = transmit();
    if (reply.fate == Fate::Done) progress_ << "ok";
    if (reply.fate == Fate::Refused) progress_ << say("rechazado, ", "refused, ");
    progress_ << harmless(reply.text) << std::endl;
    if (reply.fate != Fate::Done) keepReason(std::string(label) + ": " + reply.text);
    machine_.sent(reply.fate);
  }

  void keepReason(std::string reason) {
    if (end_.reason.empty()) end_.reason = std::move(reason);
  }

  void takeNumber() {
    end_.receipt = printer_.receipt();
    end_.number = printer_.lastNumber();
    if (!end_.number && end_.receipt) end_.number = end_.receipt->number;
  }

  const std::vector<SaleStep>& steps_;
  SalePrinter& printer_;
  std::ostream& progress_;
  SaleWitness* witness_;
  SaleMachine machine_;
  SaleEnd end_;
};

}  // namespace

SaleEnd printSale(const std::vector<SaleStep>& steps, Cents net, SalePrinter& printer, std::ostream& progress,
                  const std::function<bool()>& isInterrupted, SaleWitness* witness) {
  return Carrier(steps, SaleMachine(steps.size(), net), printer, progress, witness).carry(isInterrupted);
}

SaleEnd endSale(const Counters& before, Cents net, SalePrinter& printer, std::ostream& progress,
                SaleWitness* witness) {
  const std::vector<SaleStep> none;
  const auto never = [] { return false; };
  return Carrier(none, SaleMachine::resumed(before, net), printer, progress, witness).carry(never);
}

}  // namespace zentaro::tools
