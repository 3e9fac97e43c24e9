// Asking a printer, and judging its answers.
#include "tools/doctor/printer_facts.h"

#include <chrono>
#include <cmath>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "automation/date.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "platform/services.h"
#include "serial/modCOMM.h"
#include "text/code_page.h"
#include "text/digits.h"
#include "till/line/line_words.h"
#include "till/words/closing_words.h"
#include "tools/connection/holders.h"
#include "tools/show/show.h"
#include "zentaro.h"

namespace zentaro::tools {

using terminal::say;

namespace {

constexpr double minutesOfADay = 24 * 60, tolerance = 5;

std::optional<Date> clockOf(CZentaro& printer) {
  const Date clock = printer.GetDateTime();
  return printer.nEnvironmentError == ENVERR_OK ? std::optional(clock) : std::nullopt;
}

Date computerClock() {
  const LocalTime now = services().clock->localTime();
  return dateOf({now.year, now.month, now.day, now.hour, now.minute, now.second});
}

std::optional<int> openDocument(CZentaro& printer) {
  const auto status = printer.GetStatusHASAR();
  if (!status) return std::nullopt;
  return status->statusDocumento;
}

// What a printer at another speed, or another device, says when it is asked: the checks of an
// answer would not let it through.
std::string strayBytes(CZentaro& printer) {
  constexpr std::size_t enough = 12;
  constexpr std::chrono::seconds limit{2};
  std::u16string data, all;
  const std::int16_t port = toInt16(printer.CommPort);
  modCOMM::CommWrite(port, printer.BuildOMB(static_cast<std::int16_t>(Command::Status), Array({u"N"})));
  const auto end = std::chrono::steady_clock::now() + limit;
  while (all.size() < enough && std::chrono::steady_clock::now() < end) {
    modCOMM::CommWait(port, std::chrono::milliseconds(100));
    if (modCOMM::CommRead(port, data, enough) > 0) all += data;
  }
  std::string bytes;
  for (const char16_t character : all.substr(0, enough)) {
    constexpr std::size_t width = 2;
    bytes += (bytes.empty() ? "" : " ") + utf8(hexadecimalText(windows1252().encode(character), width));
  }
  return bytes;
}

Finding noAnswer(const PrinterFacts& facts) {
  if (!facts.stray.empty())
    return {
        "garbage", true,
        say("llegan bytes que no son una respuesta: {}", "bytes come that are no answer: {}", {facts.stray}),
        say("¿otra velocidad? La línea va a 9600 baudios, 8N1, también en el menú de la impresora\n"
            "¿otro aparato (un módem, una balanza), o el cable de otro?",
            "another speed? The line runs at 9600 baud, 8N1, in the printer's menu, too\n"
            "another device (a modem, a scale), or another one's cable?")};
  const char* code = facts.heard == till::Heard::Echo        ? "echo"
                     : facts.heard == till::Heard::OutOfStep ? "out-of-step"
                                                             : "silent";
  return {
      code, true,
      till::trouble(facts.heard) +
          (facts.outcome == ENVERR_OK ? "" : " (" + outcomeLine(facts.outcome) + ")"),
      facts.heard == till::Heard::Nothing
          ? say("¿está encendida, fuera de su menú, y el cable conectado? La línea va a 9600 baudios, 8N1",
                "is it on, out of its menu, and the cable plugged in? The line runs at 9600 baud, 8N1")
          : say("¿es este el cable de la impresora?", "is this the printer's cable?")};
}

Finding statusOf(const PrinterFacts& facts) {
  const std::string words = hexWord(facts.words.printer) + ", " + hexWord(facts.words.fiscal);
  if (facts.outcome == ENVERR_OK)
    return {
        "answers", false,
        say("responde una impresora; palabras de estado {}", "a printer answers; status words {}", {words})};
  return {"status-error", true,
          say("la impresora dice que algo anda mal: {} (palabras de estado {}, con el bit 15)",
              "the printer says that something is wrong: {} (status words {}, with bit 15)",
              {facts.errorText.empty() ? "-" : facts.errorText, words})};
}

Finding openDocumentFinding(int document, const std::string& portWords) {
  return {"document-open", true, say("hay un documento abierto", "a document is open"),
          terminal::whole("zentaro call " + portWords + " " + till::endingCommand(document))};
}

bool isOff(const PrinterFacts& facts) {
  return facts.clock && std::abs(facts.clock->days - facts.computer->days) * minutesOfADay > tolerance;
}

std::string minuteText(Date date) {
  constexpr std::size_t toTheMinute = 16;
  return isoText(date).substr(0, toTheMinute).replace(10, 1, " ");
}

Finding clockFinding(const PrinterFacts& facts, const std::string& portWords) {
  return {"clock-off", true,
          say("su reloj dice {}, y el de esta máquina {}", "its clock says {}, and this computer's {}",
              {minuteText(*facts.clock), minuteText(*facts.computer)}),
          say("con el día cerrado, después del Z:\n", "with the day closed, after the Z:\n") +
              terminal::whole("zentaro call " + portWords + " SetDateTime \"$(date '+%F %T')\"")};
}

void judgeWords(const PrinterFacts& facts, const std::string& subject, const std::string& portWords,
                Findings& findings) {
  for (const Condition& condition : conditionsIn(facts.words, facts.bits, portWords))
    findings.add(subject, {condition.code, true, condition.text, condition.advice});
  const StatusWords rest = unreadable(facts.words, facts.bits);
  for (const auto& [word, name] : {std::pair(rest.printer, say("de la impresora", "printer")),
                                   std::pair(rest.fiscal, say("fiscal", "fiscal"))})
    if (word != 0)
      findings.add(subject,
                   {"unreadable-bits", true,
                    say("no sé leer {} de la palabra de estado {}", "I cannot read {} of the {} status word",
                        {hexWord(word), name}),
                    say("mire la impresora (papel, tapa, luces); su manual dice qué es ese bit",
                        "look at the printer (paper, cover, lights); its manual says what that bit is")});
}

}  // namespace

PrinterFacts examinePrinter(Connection& connection) {
  CZentaro& printer = connection.printer();
  printer.verifyCheckSum = true;
  connection.line().startAnywhere();
  PrinterFacts facts;
  facts.heard = connection.line().askStatus([&] { printer.StatusIF(u"N"); });
  facts.outcome = printer.nEnvironmentError;
  facts.words = {printer.dwordPrinterStatus, printer.dwordStatusFiscal};
  facts.errorText = utf8(printer.sLastError);
  if (facts.heard == till::Heard::Nothing || facts.heard == till::Heard::OutOfStep)
    facts.stray = strayBytes(printer);
  if (facts.heard != till::Heard::InStep) return facts;
  facts.serialNumber = utf8(printer.SerialImpresora());
  const bool isVirtual = connection.virtualPrinter() != nullptr || isVirtualPrinterOn(connection.device()) ||
                         facts.serialNumber.starts_with("ZPV");
  facts.bits = isVirtual ? Bits::Known : Bits::Unknown;
  if (facts.outcome != ENVERR_OK) return facts;
  try {
    facts.document = openDocument(printer);
    facts.clock = clockOf(printer);
    facts.computer = computerClock();
  } catch (const AutomationError&) {
    // Answers that are no figures say nothing about document and clock.
  }
  return facts;
}

void judgePrinter(const PrinterFacts& facts, const std::string& subject, const std::string& portWords,
                  Findings& findings) {
  if (facts.heard != till::Heard::InStep) return findings.add(subject, noAnswer(facts));
  findings.add(subject, statusOf(facts));
  if (!facts.serialNumber.empty())
    findings.add(subject, {"serial-number", false,
                           say("su serial es {}", "its serial number is {}", {facts.serialNumber})});
  judgeWords(facts, subject, portWords, findings);
  if (facts.document.value_or(0) != 0) findings.add(subject, openDocumentFinding(*facts.document, portWords));
  if (isOff(facts)) findings.add(subject, clockFinding(facts, portWords));
}

}  // namespace zentaro::tools
