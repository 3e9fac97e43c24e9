// Asking a printer, and judging its answers.
#include "tools/doctor/printer_facts.h"

#include <cmath>

#include "automation/automation_error.h"
#include "automation/date.h"
#include "base/terminal/language.h"
#include "platform/services.h"
#include "tools/show/show.h"
#include "zentaro.h"

namespace zentaro::tools {

using terminal::say;

namespace {

constexpr double minutesOfADay = 24 * 60, tolerance = 5;

std::optional<double> minutesAhead(CZentaro& printer) {
  const Date clock = printer.GetDateTime();
  if (printer.nEnvironmentError != ENVERR_OK) return std::nullopt;
  const LocalTime now = services().clock->localTime();
  return (clock.days - dateOf({now.year, now.month, now.day, now.hour, now.minute, now.second}).days) *
         minutesOfADay;
}

std::optional<int> openDocument(CZentaro& printer) {
  const auto status = printer.GetStatusHASAR();
  if (!status) return std::nullopt;
  return status->statusDocumento;
}

Finding noAnswer(const PrinterFacts& facts) {
  const char* code = facts.heard == Heard::Echo        ? "echo"
                     : facts.heard == Heard::OutOfStep ? "out-of-step"
                                                       : "silent";
  return {
      code, true,
      PrinterLine::trouble(facts.heard) +
          (facts.outcome == ENVERR_OK ? "" : " (" + outcomeLine(facts.outcome) + ")"),
      facts.heard == Heard::Nothing
          ? std::string(say(
                "¿está encendida, fuera de su menú, y el cable conectado? La línea va a 9600 baudios, 8N1",
                "is it on, out of its menu, and the cable plugged in? The line runs at 9600 baud, 8N1"))
          : std::string(say("¿es este el cable de la impresora?", "is this the printer's cable?"))};
}

Finding statusOf(const PrinterFacts& facts) {
  const std::string words = hexWord(facts.printerWord) + ", " + hexWord(facts.fiscalWord);
  if (facts.outcome == ENVERR_OK)
    return {
        "answers", false,
        say("responde una impresora; palabras de estado {}", "a printer answers; status words {}", {words})};
  return {"status-error", true,
          say("la impresora dice que algo anda mal: {} (palabras de estado {}, con el bit 15)",
              "the printer says that something is wrong: {} (status words {}, with bit 15)",
              {facts.errorText.empty() ? "-" : facts.errorText, words})};
}

// By the printer's number of the kind of document: what ends it.
Finding openDocumentFinding(int document, const std::string& portWords) {
  const auto ends = [](int kind) {
    switch (kind) {
      case 3: return "CerrarDNF";
      case 4: return "CerrarComprobante E";  // partially closed: it can only be closed
      default: return "CancelarComprobante";
    }
  };
  return {"document-open", true, std::string(say("hay un documento abierto", "a document is open")),
          "zentaro call " + portWords + " " + ends(document)};
}

Finding clockFinding(double ahead, const std::string& portWords) {
  const std::string minutes = std::to_string(std::lround(std::abs(ahead)));
  const std::string text =
      ahead > 0 ? say("su reloj adelanta {} minutos", "its clock is {} minutes fast", {minutes})
                : say("su reloj atrasa {} minutos", "its clock is {} minutes slow", {minutes});
  return {"clock-off", true, text,
          say("con el día cerrado, después del Z:\nzentaro call {} SetDateTime \"$(date '+%F %T')\"",
              "with the day closed, after the Z:\nzentaro call {} SetDateTime \"$(date '+%F %T')\"",
              {portWords})};
}

}  // namespace

PrinterFacts examinePrinter(Connection& connection) {
  CZentaro& printer = connection.printer();
  printer.verifyCheckSum = true;
  connection.line().startAnywhere();
  PrinterFacts facts;
  facts.heard =
      connection.line().ask([&] { return heardOfStatus(printer, [&] { printer.StatusIF(u"N"); }); });
  facts.outcome = printer.nEnvironmentError;
  facts.printerWord = printer.dwordPrinterStatus;
  facts.fiscalWord = printer.dwordStatusFiscal;
  facts.errorText = utf8(printer.sLastError);
  if (facts.heard != Heard::InStep || facts.outcome != ENVERR_OK) return facts;
  try {
    facts.document = openDocument(printer);
    facts.minutesAhead = minutesAhead(printer);
  } catch (const AutomationError&) {
    // Answers that are no figures say nothing about document and clock.
  }
  return facts;
}

void judgePrinter(const PrinterFacts& facts, const std::string& subject, const std::string& portWords,
                  Findings& findings) {
  if (facts.heard != Heard::InStep) return findings.add(subject, noAnswer(facts));
  findings.add(subject, statusOf(facts));
  if (facts.document.value_or(0) != 0) findings.add(subject, openDocumentFinding(*facts.document, portWords));
  if (std::abs(facts.minutesAhead.value_or(0)) > tolerance)
    findings.add(subject, clockFinding(*facts.minutesAhead, portWords));
}

}  // namespace zentaro::tools
