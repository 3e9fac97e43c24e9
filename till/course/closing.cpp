// A closing as a document of one step.
#include "till/course/closing.h"

#include "base/files/json.h"
#include "base/terminal/language.h"
#include "till/books/admission.h"
#include "till/course/figures.h"

namespace zentaro::till {

using terminal::say;

namespace {

/// The state of the document that is open; 0 also when the printer does not say it.
int openDocumentOn(CZentaro& printer) {
  try {
    const auto status = printer.GetStatusHASAR();
    return status ? status->statusDocumento : 0;
  } catch (const AutomationError&) {
    return 0;
  }
}

}  // namespace

bool ClosingCourse::openBooks() {
  if (station_) return true;
  // What is read is kept only where somebody named it: it changes nothing.
  const bool isNamed = !options_.id.empty() || options_.queued;
  if (kind_ == Kind::X && !isNamed && options_.books == nullptr) options_.keepsBooks = false;
  try {
    station_ = std::make_unique<Station>(options_, isNamed ? BooksNeed::Required : BooksNeed::Wanted);
    return true;
  } catch (const BooksError& error) {
    booksCause_ = {Cause::Kind::Books, error.what(), {}};
    return false;
  }
}

ClosingVerdict ClosingCourse::verdict(Ending ending, Cause cause) const {
  ClosingVerdict made;
  made.kind = kind_;
  made.ending = ending;
  made.cause = std::move(cause);
  return made;
}

std::optional<ClosingVerdict> ClosingCourse::beforePort(const std::string& device) {
  if (!openBooks()) return verdict(Ending::NotPrinted, booksCause_);
  try {
    if (!station_->claimDevice(device)) return verdict(Ending::Busy);
  } catch (const BooksError& error) {
    return verdict(Ending::NotPrinted, {Cause::Kind::Books, error.what(), {}});
  }
  return std::nullopt;
}

// By its id; because it was printed by a call that was cut short, which nobody was told; and because a Z takes away
// what could still tell what became of a sale.
std::optional<ClosingVerdict> ClosingCourse::refused() {
  Books* books = station_->books();
  if (books == nullptr || options_.queued) return std::nullopt;
  const auto end = [&](Ending ending, const Job& job) {
    ClosingVerdict made = verdict(ending);
    made.job = job;
    return made;
  };
  if (!options_.id.empty()) {
    const Wish wish{options_.id, order().digest, {}, false};
    const Ruling ruling = admitted(*books, wish, Stage::BeforeOpening, station_->isBusy());
    switch (ruling.answer) {
      case Answer::AlreadyPrinted: return end(Ending::AlreadyPrinted, *ruling.job);
      case Answer::OtherContent: return end(Ending::OtherContent, *ruling.job);
      case Answer::Busy: return end(Ending::Busy, *ruling.job);
      case Answer::StillUnknown: return end(Ending::UnknownBefore, *ruling.job);
      case Answer::PrintedUntold:
      case Answer::Print: break;
    }
  }
  if (kind_ != Kind::Z) return std::nullopt;
  for (const Job& job : station_->judged())
    if (job.kind == Kind::Z && job.state == State::Printed) return end(Ending::PrintedBefore, job);
  if (options_.evenIfUnknown) return std::nullopt;
  for (const Job& job : books->unsettled(station_->machine()))
    if (isEvidenceOfToday(job, station_->lastZ())) return end(Ending::UnknownBefore, job);
  return std::nullopt;
}

ClosingVerdict ClosingCourse::print(CZentaro& printer, PrinterLine& line) {
  if (!openBooks()) return verdict(Ending::NotPrinted, booksCause_);
  Cause cause;
  try {
    if (const auto refusal = station_->arrive(printer, line, cause)) return verdict(*refusal, cause);
    if (auto refusal = refused()) return *refusal;
  } catch (const BooksError& error) {
    return verdict(Ending::NotPrinted, {Cause::Kind::Books, error.what(), {}});
  }
  ClosingVerdict made = verdict(Ending::Unknown);
  const nTipoCierreFiscal type = kind_ == Kind::Z ? CIERRE_Z : CIERRE_X;
  const SaleStep step{SaleStep::Kind::Open,
                      kind_ == Kind::Z ? say("cierre Z", "Z closing") : say("cierre X", "X closing"),
                      [type](CZentaro& z) { return z.RealizarCierre(type, true); },
                      [&made](const CZentaro& z) {
                        if (const auto figures = z.GetResultadoCierre()) made.figures = *figures;
                        return std::string();
                      }};
  ObjectSalePrinter asked = station_->printerFor(kind_, printer, line);
  const Order wanted = order();
  if (options_.queued)
    keeper_.emplace(*station_->books(), *options_.queued, station_->observer());
  else
    keeper_.emplace(station_->books(), wanted, options_.id.empty() ? BooksNeed::Wanted : BooksNeed::Required,
                    station_->observer());
  keeper_->shows([&made](const Verdict&) {
    return made.figures ? jsonLine({{"figures", figuresJson(*made.figures)}}) : std::string();
  });
  const Verdict course =
      printSale({step}, wanted, station_->machine(), asked, *keeper_, station_->observer(), options_.stop);
  made.ending = course.ending;
  made.cause = course.cause;
  made.number = course.number;
  made.job = course.job;
  if (course.cause.kind == Cause::Kind::Refused) made.openDocument = openDocumentOn(printer);
  // Nothing counts an X, so nobody can say that one did not come out.
  const bool isLostX = kind_ == Kind::X && course.cause.kind == Cause::Kind::Lost;
  if (isLostX) made.ending = Ending::Unknown;
  return made;
}

void ClosingCourse::told() {
  if (keeper_) keeper_->told();
}

Order ClosingCourse::order() const {
  Order made;
  made.id = options_.id;
  made.owner = options_.owner;
  made.printer = options_.printerName.empty() ? station_->device() : options_.printerName;
  made.kind = kind_;
  made.digest = kind_ == Kind::Z ? "Z" : "X";
  return made;
}

}  // namespace zentaro::till
