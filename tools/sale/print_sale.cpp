// The loop around the machine, and its verdicts in words.
#include "sale/print_sale.h"

#include <array>
#include <iomanip>
#include <ostream>

namespace zentaro::tools {

namespace {

struct VerdictText {
  int exitStatus;
  std::string_view text;
};

constexpr std::array<VerdictText, 8> verdictTexts{{
    {0, "PRINTED. The document is closed and counted. Do not print it again."},
    {0,
     "PRINTED, but extra lines may be missing. The document is closed and counted. Do not print it again; "
     "look "
     "at the paper and write down by hand what is missing."},
    {3,
     "NOT PRINTED. The document was not counted; what is on the paper is void. Remove the cause, then print "
     "the "
     "sale again."},
    {4,
     "UNKNOWN. The printer cannot say whether the document was counted. Do not print it again yet. Look at "
     "the "
     "paper: if it ends like a complete document, the sale is done; if it ends as cancelled, print the sale "
     "again; if it ends in the middle, the document is still open and must be cancelled first (zentaro call "
     "CancelarComprobante)."},
    {4,
     "STILL OPEN. The document is not counted, but the printer does not cancel it. Put the printer in order "
     "(paper, "
     "cover), cancel the document (zentaro call --device DEVICE CancelarComprobante), then print the sale "
     "again."},
    {4,
     "STILL OPEN. The document is paid and partially closed, but the printer does not close it. Do not print "
     "it "
     "again. Put the printer in order (paper, cover), then close the document (zentaro call "
     "CerrarComprobante E): "
     "the sale is then done."},
    {5,
     "NOT PRINTED. A document is open on the printer, left by another program or by a failure. Nothing was "
     "sent. "
     "Look at the paper, end that document (zentaro call --device DEVICE CancelarComprobante), then print "
     "the sale again."},
    {3,
     "NOT PRINTED. The printer does not give its counters; nothing was sent. Look at power, cable, paper and "
     "port, "
     "then print the sale again."},
}};

const VerdictText& textOf(Verdict verdict) { return verdictTexts[static_cast<std::size_t>(verdict)]; }

class Carrier {
 public:
  Carrier(const std::vector<Step>& steps, Cents net, SalePrinter& printer, std::ostream& progress)
      : steps_(steps), printer_(printer), progress_(progress), machine_(steps.size(), net) {}

  SaleEnd carry() {
    for (Action action = machine_.next(); action != Action::Stop; action = machine_.next()) take(action);
    return {machine_.verdict(), reason_};
  }

 private:
  void take(Action action) {
    switch (action) {
      case Action::AskCounters: return askCounters();
      case Action::SendStep: return sendStep();
      case Action::Cancel: return report("cancel the document", printer_.cancel());
      case Action::Finish: return report("close the partially closed document", printer_.finish());
      case Action::Stop: break;
    }
  }

  void askCounters() {
    const std::optional<Counters> counters = printer_.counters();
    progress_ << "  --  counters: ";
    if (!counters) {
      progress_ << "none, " << printer_.trouble() << "\n";
      if (reason_.empty()) reason_ = "counters: " + printer_.trouble();
    } else {
      progress_ << "last number " << counters->lastNumber
                << (counters->document == 0 ? ", no document open\n" : ", a document is open\n");
    }
    machine_.counted(counters);
  }

  void sendStep() {
    const Step& step = steps_[machine_.step()];
    const std::string number = std::to_string(machine_.step() + 1) + "/" + std::to_string(steps_.size());
    progress_ << std::setw(7) << number << "  " << std::flush;
    report(step.label, printer_.send(step));
  }

  void report(const std::string& label, const Reply& reply) {
    constexpr std::array<std::string_view, 3> fates{"ok", "refused", "answer lost"};
    progress_ << label << ": " << fates[static_cast<std::size_t>(reply.fate)];
    if (reply.fate != Fate::Done) {
      progress_ << ", " << reply.text;
      if (reason_.empty()) reason_ = label + ": " + reply.text;
    }
    progress_ << "\n" << std::flush;
    machine_.sent(reply.fate);
  }

  const std::vector<Step>& steps_;
  SalePrinter& printer_;
  std::ostream& progress_;
  SaleMachine machine_;
  std::string reason_;
};

}  // namespace

SaleEnd printSale(const std::vector<Step>& steps, Cents net, SalePrinter& printer, std::ostream& progress) {
  return Carrier(steps, net, printer, progress).carry();
}

int exitStatus(Verdict verdict) { return textOf(verdict).exitStatus; }

std::string advice(const SaleEnd& end) {
  const std::string text(textOf(end.verdict).text);
  return end.reason.empty() ? text : text + "\nCause: " + end.reason;
}

}  // namespace zentaro::tools
