// Outcome codes and answers of the printer object as fates and counters.
#include "till/course/sale_printer.h"

#include <array>

#include "automation/conversions.h"
#include "base/terminal/language.h"
#include "till/line/line_words.h"

namespace zentaro::till {

using terminal::say;

namespace {

std::string textOf(std::int16_t outcome) { return utf8(outcomeText(static_cast<ENVERR_CODES>(outcome))); }

std::int64_t netOf(const ResultadoCierre& f, bool isCreditNote) {
  const std::array<Currency, 4> bases =
      isCreditNote ? std::array{f.MontoExentoNC, f.ValorNCBase1, f.ValorNCBase2, f.ValorNCBase3}
                   : std::array{f.VentasExentas, f.BaseGravable1, f.BaseGravable2, f.BaseGravable3};
  std::int64_t scaled = 0;
  for (const Currency base : bases) scaled += base.scaled();
  return scaled / 100;
}

}  // namespace

std::optional<std::int64_t> lastZOf(const CZentaro& printer) {
  try {
    statusN status;
    status.LoadFromResponse(printer.getResponse(0));
    return status.UltimoCierreZ();
  } catch (const AutomationError&) {  // a printer that does not give it
    return std::nullopt;
  }
}

ObjectSalePrinter::ObjectSalePrinter(CZentaro& printer, PrinterLine& line, Kind kind)
    : printer_(printer), line_(line), kind_(kind) {
  printer_.verifyCheckSum = true;
}

void ObjectSalePrinter::heardLastZ(const std::optional<std::int64_t>& number) {
  lastZ_ = number;
  knowsLastZ_ = true;
}

Reply ObjectSalePrinter::send(const SaleStep& step) {
  line_.persist();
  Reply reply = run(step.send);
  if (reply.fate != Fate::Done) return reply;
  takeReceipt();
  if (std::string objection = step.objection(printer_); !objection.empty())
    return {Fate::Refused, std::move(objection), {}};
  return reply;
}

Reply ObjectSalePrinter::cancel() {
  line_.persist();
  return run([](CZentaro& z) { return z.CancelarComprobante(); });
}

Reply ObjectSalePrinter::finish() {
  line_.persist();
  Reply reply = run([](CZentaro& z) { return z.CerrarComprobante(u"E"); });
  if (reply.fate == Fate::Done) takeReceipt();
  return reply;
}

// Required: an error is a refusal only when it is certain that no frame has left.
Reply ObjectSalePrinter::run(const Operation& operation) {
  std::string raised;
  try {
    return replyOf(operation(printer_));
  } catch (const AutomationError& error) {
    if (!mayBeRaisedBehindTheCommand(error.number())) return {Fate::Refused, error.what(), {}};
    raised = error.what();
    printer_.DebugMode(false);  // the trace may be what has failed: the printer is asked without it
  } catch (const std::exception& error) {
    raised = error.what();
  }
  return lost(
      say("error al hablar con la impresora ({})", "an error while talking to the printer ({})", {raised}));
}

// What the day was before the loss need not be so behind it.
Reply ObjectSalePrinter::lost(std::string text) {
  line_.lostAnswer();
  knowsLastZ_ = false;
  return {Fate::Lost, std::move(text), {}};
}

Reply ObjectSalePrinter::replyOf(std::int16_t outcome) {
  switch (outcome) {
    case ENVERR_COMM: return lost(say("sin respuesta ({})", "no answer ({})", {textOf(outcome)}));
    case ENVERR_INVALID:
    case ENVERR_CHECKSUM:
    case ENVERR_BADSEQ:
      return lost(say("lo que llegó no es la respuesta ({})", "what came is no answer to it ({})",
                      {textOf(outcome)}));
    default: break;
  }
  if ((outcome == ENVERR_OK || outcome == ENVERR_STATUS) && !answersLastCommand(printer_))
    return lost(say("llegó la respuesta a otro comando", "the answer to another command came"));
  if (outcome == ENVERR_OK) return {};
  const std::string text = refusal(outcome);
  return {Fate::Refused, text, outcome == ENVERR_STATUS ? text : std::string()};
}

std::string ObjectSalePrinter::refusal(std::int16_t outcome) const {
  const bool saysWhy = outcome == ENVERR_STATUS && printer_.sLastError.starts_with(u"ERROR");
  return saysWhy ? utf8(printer_.sLastError) : textOf(outcome);
}

std::optional<Standing> ObjectSalePrinter::counters() {
  std::optional<Standing> standing;
  trouble_.clear();
  const Heard heard = line_.ask([&] { return askCounters(standing); });
  if (heard != Heard::InStep) standing.reset();
  if (!standing && trouble_.empty()) trouble_ = till::trouble(heard);
  return standing;
}

std::optional<std::int64_t> ObjectSalePrinter::lastNumber() {
  constexpr PrinterLine::Time shortPatience{2000};
  if (kind_ == Kind::Z) {
    const Heard heard = line_.ask([this] { return askLastZ(); }, shortPatience);
    return heard == Heard::InStep ? lastZ_ : std::nullopt;
  }
  std::optional<Standing> standing;
  const Heard heard = line_.ask([&] { return askStatus(standing); }, shortPatience);
  return heard == Heard::InStep && standing ? std::optional(standing->lastNumber) : std::nullopt;
}

Heard ObjectSalePrinter::askCounters(std::optional<Standing>& standing) {
  Heard heard = knowsLastZ_ ? Heard::InStep : askLastZ();
  if (heard == Heard::InStep && isDayReport(kind_))
    standing.emplace();  // a closing has no other number
  else if (heard == Heard::InStep)
    heard = askStatus(standing);
  if (heard != Heard::InStep) {
    knowsLastZ_ = false;
    return heard;
  }
  if (standing) standing->lastZ = lastZ_;
  if (standing && standing->document == 0 && !isDayReport(kind_)) heard = askDayAmount(standing->dayAmount);
  return heard;
}

Heard ObjectSalePrinter::askLastZ() {
  try {
    printer_.StatusIF(u"N");
  } catch (const AutomationError& error) {  // a trace
    line_.endedTrace(error);
    return Heard::OutOfStep;
  }
  const Heard heard = heardOfStatus(printer_.nEnvironmentError, printer_.getResponse(0));
  knowsLastZ_ = heard == Heard::InStep;
  if (knowsLastZ_) lastZ_ = lastZOf(printer_);
  return heard;
}

Heard ObjectSalePrinter::askStatus(std::optional<Standing>& standing) {
  standing.reset();
  try {
    const auto status = printer_.GetStatusHASAR();
    const Heard heard = heardOfStatus(printer_.nEnvironmentError, printer_.getResponse(0));
    if (heard != Heard::InStep) return heard;
    if (!status) {
      trouble_ = refusal(static_cast<std::int16_t>(printer_.nEnvironmentError));
      return heard;
    }
    standing.emplace();
    standing->document = status->statusDocumento;
    standing->lastNumber = kind_ == Kind::CreditNote ? status->numeroUltimaNC : status->numeroUltimaFactura;
    return heard;
  } catch (const AutomationError& error) {  // too few fields in the answer, or a trace
    trouble_ = error.what();
    line_.endedTrace(error);
    return error.number() == 9 ? Heard::InStep : Heard::OutOfStep;
  }
}

/// The figures of an X closing that is not printed. A printer that refuses them is in step.
Heard ObjectSalePrinter::askDayAmount(std::optional<std::int64_t>& amount) {
  const Reply reply = run([](CZentaro& z) { return z.RealizarCierre(CIERRE_X, false); });
  if (reply.fate == Fate::Lost)
    return printer_.nEnvironmentError == ENVERR_COMM ? Heard::Nothing : Heard::OutOfStep;
  if (reply.fate == Fate::Refused) return Heard::InStep;
  if (const auto figures = printer_.GetResultadoCierre()) amount = netOf(*figures, kind_ == Kind::CreditNote);
  return Heard::InStep;
}

// Only an answer with exactly this value is known to hold it.
std::optional<std::int64_t> ObjectSalePrinter::openedNumber() const {
  constexpr int fields = 5;  // command code, two status words, number, checksum
  const Variant answer = printer_.getResponse(0);
  if (!answer.is(Variant::Kind::Array) || answer.array().upperBound() + 1 != fields) return std::nullopt;
  const DecimalReading number = readDecimal(utf8(toText(answer.array().at(3))), 0);
  return number.problem.empty() ? std::optional(number.value) : std::nullopt;
}

// Only an answer with exactly these three values is known to hold them.
void ObjectSalePrinter::takeReceipt() {
  constexpr int fields = 7;  // command code, two status words, number, total, change, checksum
  const Variant answer = printer_.getResponse(0);
  const bool isClose = printer_.nLastCommand == static_cast<std::int16_t>(Command::CloseDocument);
  if (!isClose || !answer.is(Variant::Kind::Array) || answer.array().upperBound() + 1 != fields) return;
  const auto value = [&](int index) { return readDecimal(utf8(toText(answer.array().at(index))), 0); };
  const DecimalReading number = value(3), total = value(4), change = value(5);
  const bool isRead = number.problem.empty() && total.problem.empty() && change.problem.empty();
  if (isRead) receipt_ = {number.value, total.value, change.value};
}

}  // namespace zentaro::till
