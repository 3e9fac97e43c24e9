// The shell around the recovery: clock, port and what the user is told.
#include "till/line/printer_line.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <random>
#include <stdexcept>
#include <thread>

#include "automation/conversions.h"
#include "base/system/interruption.h"
#include "base/terminal/language.h"
#include "serial/driver_trace.h"
#include "serial/modCOMM.h"

namespace zentaro::tools {

using terminal::say;

namespace {

PrinterLine::Time now() {
  return std::chrono::duration_cast<PrinterLine::Time>(std::chrono::steady_clock::now().time_since_epoch());
}

std::string seconds(PrinterLine::Time time) {
  return std::to_string(std::chrono::round<std::chrono::seconds>(time).count());
}

void sayThatItWaits(PrinterLine::Time limit) {
  std::cerr << say("zentaro: sin respuesta en orden; se espera a la impresora, {} s a lo sumo (--give-up)\n",
                   "zentaro: no answer in step; waiting for the printer, {} s at most (--give-up)\n",
                   {seconds(limit)});
}

void sayHowLong(PrinterLine::Time waited, PrinterLine::Time limit) {
  std::cerr << say("zentaro: se sigue esperando, {} de {} s\n", "zentaro: still waiting, {} of {} s\n",
                   {seconds(waited), seconds(limit)});
}

}  // namespace

bool endedTrace(CZentaro& printer, const AutomationError& error) {
  constexpr int firstOfFiles = 52, lastOfFiles = 76;
  if (error.number() < firstOfFiles || error.number() > lastOfFiles) return false;
  printer.DebugMode(false);
  std::cerr << say("zentaro: aviso: la traza no se puede escribir ({}); se sigue sin ella\n",
                   "zentaro: warning: the trace cannot be written ({}); going on without it\n",
                   {error.what()});
  return true;
}

PrinterLine::Time patienceOf(const std::optional<int>& giveUpSeconds, int timeOutSeconds) {
  return std::chrono::seconds(giveUpSeconds.value_or(std::max(30, 3 * timeOutSeconds)));
}

void PrinterLine::startAnywhere() {
  constexpr int numbers = 95;
  std::random_device random;
  const int steps = std::uniform_int_distribution(0, numbers - 1)(random);
  for (int step = 0; step < steps; ++step) printer_.BuildOMB(static_cast<std::int16_t>(Command::Status), {});
}

void PrinterLine::traceDriver() {
  tracesDriver_ = true;
  modCOMM::CommTraceStart();
}

Heard PrinterLine::ask(const std::function<Heard()>& request) { return ask(request, patience_); }

Heard PrinterLine::ask(const std::function<Heard()>& request, Time patience) {
  using Act = Recovery::Act;
  constexpr Time rarely{5000};
  Recovery recovery(hasLost_ ? Act::Listen : Act::Ask, patience, now());
  hasLost_ = false;
  std::optional<Time> said;
  for (;;) {
    switch (recovery.next()) {
      case Act::Ask: recovery.asked(request(), now()); break;
      case Act::Listen: {
        if (isToEnd()) return recovery.heard();
        const Time waited = recovery.waited(now());
        if (!said) sayThatItWaits(patience);
        if (said && waited - *said > rarely) sayHowLong(waited, patience);
        if (!said || waited - *said > rarely) said = waited;
        listen(recovery.silence(), std::max(Time(0), patience - waited));
        recovery.listened();
        break;
      }
      case Act::Reopen: recovery.reopened(reopen(), now()); break;
      case Act::Stop: hasLost_ = recovery.heard() != Heard::InStep; return recovery.heard();
    }
  }
}

void PrinterLine::getInStep() {
  const bool verifies = std::exchange(printer_.verifyCheckSum, true);
  const Heard heard = ask([this] { return heardOfStatus(printer_, [this] { printer_.StatusIF(u"N"); }); });
  printer_.verifyCheckSum = verifies;
  if (isToEnd()) throw std::runtime_error(std::string(say("interrumpido", "interrupted")));
  if (heard != Heard::InStep) throw std::runtime_error(trouble(heard));
}

std::string PrinterLine::trouble(Heard heard) {
  switch (heard) {
    case Heard::InStep: return {};
    case Heard::Nothing: return std::string(say("la impresora no responde", "the printer does not answer"));
    case Heard::OutOfStep:
      return std::string(say("lo que llega no es la respuesta a lo que se pregunta",
                             "what arrives is not the answer to what is asked"));
    case Heard::Echo:
      return std::string(say("la línea devuelve lo que se le envía: no hay impresora en ella",
                             "the line returns what is sent: there is no printer on it"));
  }
  return {};
}

// What arrives is thrown away here already; the port's own trace shows it.
void PrinterLine::listen(Time silence, Time limit) {
  constexpr std::int32_t chunk = 4096;
  const Time end = now() + std::max(limit, silence);
  Time quietSince = now();
  std::u16string data;
  for (Time moment = now(); moment - quietSince < silence && moment < end && !isToEnd(); moment = now()) {
    modCOMM::CommWait(port(), silence - (moment - quietSince));
    if (modCOMM::CommRead(port(), data, chunk) > 0)
      quietSince = now();
    else if (now() - moment < Time(10))
      std::this_thread::sleep_for(Time(10));  // a line that was interrupted does not let one wait for it
  }
}

// At once: a port that stays closed gives up its lock.
bool PrinterLine::reopen() {
  try {
    printer_.PortOpen(false);
    printer_.PortOpen(true);
    if (tracesDriver_) modCOMM::CommTraceStart();
    return true;
  } catch (const AutomationError&) {
    printer_.PortOpen(false);
    return false;
  }
}

bool PrinterLine::isToEnd() const { return !persists_ && Interruption::isRequested(); }

std::int16_t PrinterLine::port() const { return toInt16(printer_.CommPort); }

}  // namespace zentaro::tools
