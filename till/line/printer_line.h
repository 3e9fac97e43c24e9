// The line between a printer object and its printer: whether they are in step, and how they get there again.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "automation/automation_error.h"
#include "till/line/answer_check.h"

namespace zentaro::tools {

class PrinterLine {
 public:
  using Time = Recovery::Time;

  /// The printer must be open on its port and outlive it. `patience` is how long an answer that got
  /// lost is waited for.
  PrinterLine(CZentaro& printer, Time patience) : printer_(printer), patience_(patience) {}

  /// Begins at a random place in the sequence of commands, so that a late answer to another program's command
  /// is not taken for one's own.
  void startAnywhere();

  /// Starts the driver trace, as the settings say, now and after every further opening.
  void traceDriver();

  /// Notes that a command's answer was lost: the next question first waits until the line is silent.
  void lostAnswer() { hasLost_ = true; }

  /// From now on a signal does not end the waiting: something is to be finished on the printer.
  void persist() { persists_ = true; }

  /// Asks until the answer is in step, the patience is over or a signal has come, and says on standard error that it waits.
  /// `request` changes nothing on the printer; heardOfStatus() judges its answer.
  Heard ask(const std::function<Heard()>& request);
  /// The same with less patience.
  Heard ask(const std::function<Heard()>& request, Time patience);

  /// Asks for the printer's status, with its checksum verified. Raises std::runtime_error when line and
  /// printer do not get in step.
  void getInStep();

  /// What came of ask(), as a sentence without a full stop.
  static std::string trouble(Heard heard);

 private:
  void listen(Time silence, Time limit);
  bool reopen();
  bool isToEnd() const;
  std::int16_t port() const;

  CZentaro& printer_;
  Time patience_;
  bool hasLost_ = false, persists_ = false, tracesDriver_ = false;
};

/// What came of the status request that the printer object sent last.
inline Heard heardOfStatus(const CZentaro& printer) {
  return heardOfStatus(printer.nEnvironmentError, printer.getResponse(0));
}

/// Whether the error comes from an object trace that cannot be written. That trace is off then, so that the printer
/// can be asked all the same, and the user knows.
bool endedTrace(CZentaro& printer, const AutomationError& error);

/// The same of a request that is sent here. A record that cannot be filled raises, which is passed on only when
/// the answer was one to the request.
template <class Request>
Heard heardOfStatus(CZentaro& printer, const Request& request) {
  try {
    request();
  } catch (const AutomationError& error) {
    if (endedTrace(printer, error)) return Heard::OutOfStep;
    if (heardOfStatus(printer) == Heard::InStep) throw;
  }
  return heardOfStatus(printer);
}

/// How long a command waits: what the user says, else three times the time-out of an answer, at least 30 s.
PrinterLine::Time patienceOf(const std::optional<int>& giveUpSeconds, int timeOutSeconds);

}  // namespace zentaro::tools
