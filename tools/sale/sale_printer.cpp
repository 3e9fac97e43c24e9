// Outcome codes and answers of the printer object as fates and counters.
#include "sale/sale_printer.h"

#include <array>
#include <chrono>
#include <thread>

namespace zentaro::tools {

namespace {

std::string reasonOf(const CZentaro& printer, std::int16_t outcome) {
  if (outcome == ENVERR_STATUS && printer.sLastError.starts_with(u"ERROR")) return utf8(printer.sLastError);
  return utf8(outcomeText(static_cast<ENVERR_CODES>(outcome)));
}

Reply replyOf(const CZentaro& printer, std::int16_t outcome) {
  switch (outcome) {
    case ENVERR_OK: return {};
    case ENVERR_COMM:
    case ENVERR_INVALID:
    case ENVERR_CHECKSUM:
    case ENVERR_BADSEQ: return {Fate::Lost, reasonOf(printer, outcome)};
    default: return {Fate::Refused, reasonOf(printer, outcome)};
  }
}

}  // namespace

ObjectSalePrinter::ObjectSalePrinter(CZentaro& printer, bool isCreditNote)
    : printer_(printer), isCreditNote_(isCreditNote) {
  printer_.verifyCheckSum = true;
}

Reply ObjectSalePrinter::send(const Step& step) {
  try {
    Reply reply = replyOf(printer_, step.send(printer_));
    if (reply.fate != Fate::Done) return reply;
    std::string objection = step.objection(printer_);
    if (objection.empty()) return reply;
    return {Fate::Refused, std::move(objection)};
  } catch (const AutomationError& error) {  // a value that does not convert: nothing was sent
    return {Fate::Refused, error.what()};
  }
}

Reply ObjectSalePrinter::cancel() { return replyOf(printer_, printer_.CancelarComprobante()); }

Reply ObjectSalePrinter::finish() { return replyOf(printer_, printer_.CerrarComprobante(u"E")); }

// A late answer to an earlier command spoils one request, a line that was interrupted needs the port opened
// anew.
std::optional<Counters> ObjectSalePrinter::counters() {
  constexpr int tries = 4;
  for (int left = tries; left > 0; --left) {
    if (auto counters = askOnce()) return counters;
    if (left > 1 && printer_.nEnvironmentError == ENVERR_COMM) reopen();
  }
  return std::nullopt;
}

std::string ObjectSalePrinter::trouble() const {
  const ENVERR_CODES outcome = printer_.nEnvironmentError;
  return outcome == ENVERR_OK ? "the answer has too few fields"
                              : replyOf(printer_, static_cast<std::int16_t>(outcome)).text;
}

std::optional<Counters> ObjectSalePrinter::askOnce() {
  try {
    const auto status = printer_.GetStatusHASAR();
    if (!status) return std::nullopt;
    Counters counters{
        status->statusDocumento, isCreditNote_ ? status->numeroUltimaNC : status->numeroUltimaFactura, {}};
    if (counters.document != 0) return counters;
    counters.dayNet = dayNet();
    // Lost, not refused: the whole question is asked again.
    const bool isLost = !counters.dayNet && printer_.nEnvironmentError != ENVERR_STATUS &&
                        printer_.nEnvironmentError != ENVERR_OK;
    return isLost ? std::nullopt : std::optional(counters);
  } catch (const AutomationError&) {  // too few fields in the answer
    return std::nullopt;
  }
}

/// The figures of an X closing that is not printed.
std::optional<Cents> ObjectSalePrinter::dayNet() {
  if (printer_.RealizarCierre(CIERRE_X, false) != ENVERR_OK) return std::nullopt;
  const auto figures = printer_.GetResultadoCierre();
  if (!figures) return std::nullopt;
  const ResultadoCierre& f = *figures;
  const std::array<Currency, 4> bases =
      isCreditNote_ ? std::array{f.MontoExentoNC, f.ValorNCBase1, f.ValorNCBase2, f.ValorNCBase3}
                    : std::array{f.VentasExentas, f.BaseGravable1, f.BaseGravable2, f.BaseGravable3};
  std::int64_t scaled = 0;
  for (const Currency base : bases) scaled += base.scaled();
  return scaled / 100;
}

void ObjectSalePrinter::reopen() {
  printer_.PortOpen(false);
  try {
    printer_.PortOpen(true);
  } catch (const AutomationError&) {  // the device is gone for a moment, as after a cable was pulled
    printer_.PortOpen(false);
    std::this_thread::sleep_for(std::chrono::seconds(1));
    try {
      printer_.PortOpen(true);
    } catch (const AutomationError&) {
      printer_.PortOpen(false);  // the next request then fails, and says so
    }
  }
}

}  // namespace zentaro::tools
