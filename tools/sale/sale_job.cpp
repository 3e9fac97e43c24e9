// The journal around the printing of a sale.
#include "tools/sale/sale_job.h"

#include <unistd.h>

#include <chrono>
#include <iostream>
#include <stdexcept>
#include <system_error>

#include "base/files/json.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "till/document/content.h"
#include "tools/show/guarded.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

// Of the status that was asked for last.
std::optional<int> lastZOf(const CZentaro& printer) {
  try {
    statusN status;
    status.LoadFromResponse(printer.getResponse(0));
    return status.UltimoCierreZ();
  } catch (const AutomationError&) {  // a printer that does not give it
    return std::nullopt;
  }
}

}  // namespace

SaleJob::SaleJob(SaleOrder order)
    : order_(std::move(order)), wish_{order_.key, oldContentDigest(order_.sale).substr(2), order_.again} {}

void SaleJob::openJournal() {
  try {
    journal_ = std::make_unique<Journal>(stateFolder());
    bookkeeper_.emplace(*journal_, wish_);
  } catch (const std::system_error& error) {
    const std::string text = say("no se puede escribir el diario: {}", "the journal cannot be written: {}",
                                 {harmless(error.what())});
    if (!order_.key.empty()) throw std::runtime_error(text);
    std::cerr << say("zentaro: aviso: ", "zentaro: warning: ") << text << '\n';
  }
}

JournalVerdict SaleJob::resolve(Fact fact) {
  if (const auto verdict = bookkeeper_ ? bookkeeper_->resolve(fact) : std::nullopt) return *verdict;
  throw std::runtime_error(std::string(say("el diario no tiene ninguna duda sobre esta venta",
                                           "the journal has no open question about this sale")));
}

std::optional<JournalVerdict> SaleJob::refusal() const {
  return bookkeeper_ ? bookkeeper_->beforePort() : std::nullopt;
}

std::optional<SaleEnd> SaleJob::getInStep(const SalePrinterPort& port) {
  port.printer.verifyCheckSum = true;
  port.line.startAnywhere();
  try {
    port.line.getInStep();
    return std::nullopt;
  } catch (const std::runtime_error& error) {
    return SaleEnd{Verdict::Unreachable, error.what()};
  }
}

std::optional<JournalVerdict> SaleJob::refusal(const SalePrinterPort& port) {
  if (!bookkeeper_) return std::nullopt;
  entry_.lastZ = lastZOf(port.printer);
  entry_.machine = machineOf(port);
  bookkeeper_->judge(entry_.machine, entry_.lastZ, port.printer, port.line);
  return bookkeeper_->beforePrinting();
}

std::string SaleJob::machineOf(const SalePrinterPort& port) const {
  const std::string serial = utf8(port.printer.SerialImpresora());
  if (port.printer.nEnvironmentError != ENVERR_OK) port.line.lostAnswer();
  return serial.empty() || !answersLastCommand(port.printer) ? order_.device : serial;
}

SaleEnd SaleJob::print(const SalePrinterPort& port, std::ostream& progress,
                       const std::function<bool()>& isInterrupted) {
  ObjectSalePrinter printer(port.printer, port.line, order_.sale.isCreditNote);
  recorder_.emplace(journal_.get(), newEntry(),
                    order_.key.empty() ? JournalNeed::Wanted : JournalNeed::Required);
  SaleEnd end = printSale(stepsOf(order_.sale, order_.totals), order_.totals.net, printer, progress,
                          isInterrupted, &*recorder_);
  recorder_->ended(end);
  return end;
}

Entry SaleJob::newEntry() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  entry_.at = std::chrono::duration_cast<std::chrono::seconds>(now).count();
  entry_.name = std::to_string(now.count()) + "-" + std::to_string(::getpid());
  entry_.process = processName(::getpid());
  entry_.key = wish_.key;
  entry_.digest = wish_.digest;
  entry_.device = order_.device;
  entry_.isCreditNote = order_.sale.isCreditNote;
  entry_.net = order_.totals.net;
  entry_.total = order_.totals.due();
  return entry_;
}

int SaleJob::exitStatus(const SaleEnd& end) const {
  return recorder_->hasObjected() ? exitFailed : tools::exitStatus(end.verdict);
}

void SaleJob::told() { recorder_->told(); }

Json verdictJson(const JournalVerdict& verdict) {
  return {{"verdict", verdict.name}, {"number", verdict.number ? Json(*verdict.number) : Json(nullptr)},
          {"total", nullptr},        {"igtf", nullptr},
          {"change", nullptr},       {"cause", nullptr},
          {"next", verdict.text},    {"virtual", false}};
}

}  // namespace zentaro::tools
