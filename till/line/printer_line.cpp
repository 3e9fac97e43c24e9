// The shell around the recovery: clock and port.
#include "till/line/printer_line.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

#include "automation/conversions.h"
#include "printer/cached_settings.h"
#include "serial/driver_trace.h"
#include "serial/modCOMM.h"
#include "till/line/deadline.h"

namespace zentaro::till {

namespace {

PrinterLine::Time now() {
  return std::chrono::duration_cast<PrinterLine::Time>(std::chrono::steady_clock::now().time_since_epoch());
}

Heard heardOfLastStatus(const CZentaro& printer) {
  return heardOfStatus(printer.nEnvironmentError, printer.getResponse(0));
}

}  // namespace

int timeOutSeconds() { return readTimeOut(); }

PrinterLine::Time patienceOf(const std::optional<int>& giveUpSeconds) {
  return std::chrono::seconds(giveUpSeconds.value_or(std::max(30, 3 * timeOutSeconds())));
}

bool PrinterLine::endedTrace(const AutomationError& error) {
  constexpr int firstOfFiles = 52, lastOfFiles = 76;
  if (error.number() < firstOfFiles || error.number() > lastOfFiles) return false;
  printer_.DebugMode(false);
  if (observer_ != nullptr) observer_->traceEnded(error.what());
  return true;
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

Heard PrinterLine::ask(const std::function<Heard()>& request, Time patience) {
  using Act = Recovery::Act;
  Recovery recovery(hasLost_ ? Act::Listen : Act::Ask, patience, now());
  hasLost_ = false;
  std::optional<Time> told;
  // The first question has the time-out of an answer, those behind it what is left of the patience.
  std::optional<Deadline::Clock::time_point> end;
  for (;;) {
    switch (recovery.next()) {
      case Act::Ask: {
        recovery.asked(askOnce(request, end), now());
        end = Deadline::Clock::now() + (patience - recovery.waited(now()));
        break;
      }
      case Act::Listen: {
        if (isStopped()) return Heard::Stopped;
        const Time waited = recovery.waited(now());
        tellWait(waited, patience, told);
        listen(recovery.silence(),
               patience == Time(0) ? recovery.silence() : std::max(Time(0), patience - waited));
        recovery.listened();
        break;
      }
      case Act::Reopen: recovery.reopened(reopen(), now()); break;
      case Act::Stop: hasLost_ = recovery.heard() != Heard::InStep; return recovery.heard();
    }
  }
}

Heard PrinterLine::askOnce(const std::function<Heard()>& request,
                           const std::optional<Deadline::Clock::time_point>& end) {
  std::optional<Deadline> deadline;
  if (end) deadline.emplace(*end);
  try {
    const Heard machine = mayBeAnotherMachine_ ? compareMachine() : Heard::InStep;
    return machine == Heard::InStep ? request() : machine;
  } catch (const Deadline::Over&) {
    constexpr std::int32_t nothing = 0x8000;  // what the object keeps behind a time-out
    printer_.dwordPrinterStatus = printer_.dwordStatusFiscal = nothing;
    printer_.nEnvironmentError = ENVERR_COMM;
    return Heard::Nothing;
  }
}

void PrinterLine::tellWait(Time waited, Time patience, std::optional<Time>& told) {
  constexpr Time rarely{5000};
  if (observer_ == nullptr || (told && waited - *told <= rarely)) return;
  if (told)
    observer_->stillWaiting(waited, patience);
  else
    observer_->waiting(patience);
  told = waited;
}

// Required: before anything else is asked. What another machine says of itself would be believed.
Heard PrinterLine::compareMachine() {
  const std::u16string serial = printer_.SerialImpresora();
  const Heard heard = heardOfSerial(printer_.nEnvironmentError, printer_.getResponse(0));
  if (heard != Heard::InStep) return heard;
  if (utf8(serial) != serial_) return Heard::OtherMachine;
  mayBeAnotherMachine_ = false;
  return Heard::InStep;
}

Heard PrinterLine::askSerial(std::string& serial) {
  return ask([&] {
    serial = utf8(printer_.SerialImpresora());
    return heardOfSerial(printer_.nEnvironmentError, printer_.getResponse(0));
  });
}

Heard PrinterLine::askStatus(const std::function<void()>& request) {
  return ask([&] { return heardOf(request); });
}

Heard PrinterLine::heardOf(const std::function<void()>& request) {
  try {
    request();
  } catch (const AutomationError& error) {
    if (endedTrace(error)) return Heard::OutOfStep;
    if (heardOfLastStatus(printer_) == Heard::InStep) throw;
  }
  return heardOfLastStatus(printer_);
}

Heard PrinterLine::getInStep() {
  const bool verifies = std::exchange(printer_.verifyCheckSum, true);
  const Heard heard = askStatus([this] { printer_.StatusIF(u"N"); });
  printer_.verifyCheckSum = verifies;
  return isStopped() ? Heard::Stopped : heard;
}

// What arrives is thrown away here already; the port's own trace shows it.
void PrinterLine::listen(Time silence, Time limit) {
  constexpr std::int32_t chunk = 4096;
  const Time end = now() + limit;
  Time quietSince = now();
  std::u16string data;
  for (Time moment = now(); moment - quietSince < silence && moment < end && !isStopped(); moment = now()) {
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
    mayBeAnotherMachine_ = !serial_.empty();
    return true;
  } catch (const AutomationError&) {
    printer_.PortOpen(false);
    return false;
  }
}

std::int16_t PrinterLine::port() const { return toInt16(printer_.CommPort); }

}  // namespace zentaro::till
