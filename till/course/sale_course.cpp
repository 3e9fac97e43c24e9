// The order of the questions.
#include "till/course/sale_course.h"

#include "base/files/json.h"
#include "till/course/figures.h"
#include "till/document/content.h"

namespace zentaro::till {

namespace {

BooksNeed needOf(const SellOptions& options) {
  return options.id.empty() && !options.queued ? BooksNeed::Wanted : BooksNeed::Required;
}

}  // namespace

SaleCourse::SaleCourse(const Sale& sale, const Totals& totals, const SellOptions& options)
    : sale_(sale),
      totals_(totals),
      options_(options),
      wish_{options.id, contentDigest(sale), oldContentDigest(sale), options.again} {}

bool SaleCourse::openBooks() {
  if (station_) return true;
  try {
    station_ = std::make_unique<Station>(options_, needOf(options_));
    return true;
  } catch (const BooksError& error) {
    booksCause_ = {Cause::Kind::Books, error.what(), {}};
    return false;
  }
}

Verdict SaleCourse::verdict(Ending ending, Cause cause) const {
  Verdict made;
  made.ending = ending;
  made.cause = std::move(cause);
  made.totals = totals_;
  return made;
}

// A job that waits in the books was admitted when it was put there.
std::optional<Verdict> SaleCourse::refused(Stage stage) {
  if (station_->books() == nullptr || options_.queued) return std::nullopt;
  try {
    const Ruling ruling = admitted(*station_->books(), wish_, stage, station_->isBusy());
    const auto end = [&](Ending ending) {
      Verdict made = verdict(ending);
      made.job = ruling.job;
      return made;
    };
    switch (ruling.answer) {
      case Answer::Print: break;
      case Answer::AlreadyPrinted: return end(Ending::AlreadyPrinted);
      case Answer::OtherContent: return end(Ending::OtherContent);
      case Answer::PrintedUntold: return end(Ending::PrintedBefore);
      case Answer::StillUnknown: return end(Ending::UnknownBefore);
      case Answer::Busy: return end(Ending::Busy);
    }
  } catch (const BooksError& error) {
    if (needOf(options_) == BooksNeed::Required)
      return verdict(Ending::NotPrinted, {Cause::Kind::Books, error.what(), {}});
    station_->observer().goesOnWithoutBooks(error.what());
  }
  return std::nullopt;
}

std::optional<Verdict> SaleCourse::beforePort(const std::string& device) {
  if (!openBooks()) return verdict(Ending::NotPrinted, booksCause_);
  if (auto refusal = refused(Stage::BeforePort)) return refusal;
  try {
    if (!station_->claimDevice(device)) return verdict(Ending::Busy);
  } catch (const BooksError& error) {
    return verdict(Ending::NotPrinted, {Cause::Kind::Books, error.what(), {}});
  }
  return std::nullopt;
}

Verdict SaleCourse::print(CZentaro& printer, PrinterLine& line) {
  if (!openBooks()) return verdict(Ending::NotPrinted, booksCause_);
  if (auto refusal = refused(Stage::BeforePort)) return *refusal;
  if (const auto warning = sumWarning(sale_, totals_)) station_->observer().sumsDiffer(*warning);
  Cause cause;
  try {
    if (const auto refusal = station_->arrive(printer, line, cause)) return verdict(*refusal, cause);
  } catch (const BooksError& error) {
    return verdict(Ending::NotPrinted, {Cause::Kind::Books, error.what(), {}});
  }
  if (station_->seesOthersDocument()) return verdict(Ending::OpenBefore);
  if (auto refusal = refused(Stage::BeforeOpening)) return *refusal;
  if (options_.again && options_.id.empty()) markTold();
  const Order wanted = order();
  ObjectSalePrinter asked = station_->printerFor(wanted.kind, printer, line);
  if (options_.queued)
    keeper_.emplace(*station_->books(), *options_.queued, station_->observer());
  else
    keeper_.emplace(station_->books(), wanted, needOf(options_), station_->observer());
  keeper_->shows([this](const Verdict& verdict) {
    Verdict whole = verdict;
    whole.totals = totals_;
    return jsonLine(amountsJson(whole));
  });
  Verdict made = printSale(stepsOf(sale_, totals_), wanted, station_->machine(), asked, *keeper_,
                           station_->observer(), options_.stop);
  made.totals = totals_;
  return made;
}

void SaleCourse::told() {
  if (keeper_) keeper_->told();
}

// The new customer's sale is told apart from the one that was cut short, and nobody asks for that one any more.
void SaleCourse::markTold() {
  if (station_->books() == nullptr) return;
  try {
    for (const Job& job : station_->books()->openWithDigest(wish_.digest, wish_.oldDigest))
      if (job.state == State::Printed) station_->books()->told(job);
  } catch (const BooksError& error) {
    station_->observer().booksFell(error.what());
  }
}

Order SaleCourse::order() const {
  Order made;
  made.id = options_.id;
  made.owner = options_.owner;
  made.printer = options_.printerName.empty() ? station_->device() : options_.printerName;
  made.kind = sale_.isCreditNote ? Kind::CreditNote : Kind::Invoice;
  made.digest = wish_.digest;
  made.net = totals_.net;
  made.total = totals_.due();
  return made;
}

}  // namespace zentaro::till
