// The line between a printer object and its printer: whether they are in step, and how they get there again.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "automation/automation_error.h"
#include "till/line/answer_check.h"
#include "till/line/deadline.h"
#include "till/line/line_observer.h"

namespace zentaro::till {

class PrinterLine {
 public:
  using Time = Recovery::Time;

  /// The printer must be open on its port; it and the observer must outlive this. `patience` is how long an answer
  /// that got lost is waited for; `stop` is asked while that lasts.
  PrinterLine(CZentaro& printer, Time patience, LineObserver* observer = nullptr,
              std::function<bool()> stop = {})
      : printer_(printer), patience_(patience), observer_(observer), stop_(std::move(stop)) {}

  /// Begins at a random place in the sequence of commands, so that a late answer to another program's command
  /// is not taken for one's own.
  void startAnywhere();

  /// Starts the driver trace, as the settings say, now and after every further opening.
  void traceDriver();

  /// Notes that a command's answer was lost: the next question first waits until the line is silent.
  void lostAnswer() { hasLost_ = true; }

  /// From now on nothing stops the waiting: something is to be finished on the printer.
  void persist() { persists_ = true; }
  /// Whether the waiting is to end, or has ended, because somebody wants to stop.
  bool isStopped() const { return !persists_ && stop_ && stop_(); }

  /// From now on only the machine with this serial number is in step after a further opening; an
  /// empty one is not compared.
  void expect(std::string serial) { serial_ = std::move(serial); }

  /// Asks until the answer is in step, the patience is over or somebody wants to stop; an answer that has not come by
  /// then is waited for no longer.
  /// `request` changes nothing on the printer; heardOfStatus() judges its answer.
  Heard ask(const std::function<Heard()>& request) { return ask(request, patience_); }
  /// The same with less patience.
  Heard ask(const std::function<Heard()>& request, Time patience);
  /// The same for a request for a status. An error that is raised because a record cannot be filled from an answer
  /// which is in step is passed on.
  Heard askStatus(const std::function<void()>& request);

  /// Asks for the printer's status, with its checksum verified.
  Heard getInStep();
  /// Asks for the machine's serial number; empty when it gives none.
  Heard askSerial(std::string& serial);

  /// Whether the error comes from an object trace that cannot be written. That trace is off then, so that the
  /// printer can be asked all the same.
  bool endedTrace(const AutomationError& error);

 private:
  Heard heardOf(const std::function<void()>& request);
  Heard compareMachine();
  Heard askOnce(const std::function<Heard()>& request, const std::optional<Deadline::Clock::time_point>& end);
  void tellWait(Time waited, Time patience, std::optional<Time>& told);
  void listen(Time silence, Time limit);
  bool reopen();
  std::int16_t port() const;

  CZentaro& printer_;
  Time patience_;
  LineObserver* observer_;
  std::function<bool()> stop_;
  std::string serial_;
  bool hasLost_ = false, persists_ = false, tracesDriver_ = false;
  bool mayBeAnotherMachine_ = false;
};

/// The setting TimeOutZT as it is in force.
int timeOutSeconds();

/// How long a command waits: what the user says, else three times the time-out of an answer, at least 30 s.
PrinterLine::Time patienceOf(const std::optional<int>& giveUpSeconds);

}  // namespace zentaro::till
