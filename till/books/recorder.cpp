// Each turn of a sale is on the disk before the printer is sent what comes next.
#include "till/books/recorder.h"

#include <iostream>
#include <system_error>

#include "base/terminal/harmless.h"
#include "base/terminal/language.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

Fact factOf(Verdict verdict) {
  switch (verdict) {
    case Verdict::Printed:
    case Verdict::PrintedInPart: return Fact::Printed;
    case Verdict::NotPrinted:
    case Verdict::OpenBefore:
    case Verdict::Unreachable: return Fact::NotPrinted;
    case Verdict::Unknown:
    case Verdict::StillOpen:
    case Verdict::StillToBeClosed: break;
  }
  return Fact::Unknown;
}

std::string Recorder::opening(const Counters& before) {
  if (journal_ == nullptr) return {};
  entry_.before = before;
  entry_.turn = "open";
  try {
    if (!journal_->begin(entry_))
      return object(say("otro proceso ya imprime la venta \"{}\"",
                        "another process is printing the sale \"{}\"", {entry_.key}));
    hasBegun_ = true;
    return {};
  } catch (const std::system_error& error) {
    if (need_ == JournalNeed::Required)
      return object(
          say("no se puede escribir el diario: {}", "the journal cannot be written: {}", {error.what()}));
  }
  std::cerr << say("zentaro: aviso: la venta no queda en el diario\n",
                   "zentaro: warning: the journal misses this sale\n");
  return {};
}

std::string Recorder::object(std::string reason) {
  hasObjected_ = true;
  return reason;
}

void Recorder::opened(const std::optional<int>& number) {
  entry_.number = number;
  turned("lines");
}

void Recorder::turned(std::string_view turn) {
  entry_.turn = turn;
  keep();
}

void Recorder::ended(const SaleEnd& end) {
  entry_.fact = factOf(end.verdict);
  if (end.number) entry_.number = end.number;
  keep();
}

void Recorder::told() {
  entry_.isTold = true;
  keep();
}

// The sale is under way: a journal that cannot be written is no reason to leave a document open.
void Recorder::keep() {
  if (!hasBegun_) return;
  try {
    journal_->keep(entry_);
  } catch (const std::system_error& error) {
    std::cerr << say("zentaro: aviso: no se puede escribir el diario: {}\n",
                     "zentaro: warning: the journal cannot be written: {}\n", {harmless(error.what())});
  }
}

}  // namespace zentaro::tools
