// The course of a sale, without printer or clock: what happened goes in, what to do next comes out. It never
// sends a step twice. When a step fails or its answer is lost it asks for the counters and goes by them:
//
//   Starting --counters, nothing open--> Printing --last step done--> printed
//                                           | a step refused, its answer lost, or an interruption
//                                           v
//     +---------------------------------> Judging --nothing open--> printed, not printed or unknown,
//     |                                     |  |                    by the counters
//     |                 a document is open  |  |  it is partially closed
//     |                                     v  +-----> Finishing --done--> printed, extra lines missing
//     +-- whatever came of it -- Cancelling             |
//     +-- refused or lost ------------------------------+
//
// Required: the number of the last document alone proves nothing. A printer may give it when a document is opened,
// and a cancelled document then keeps it. What proves that a document was counted are the amounts of the day.
#pragma once

#include <cstddef>
#include <optional>

#include "till/document/decimal.h"

namespace zentaro::tools {

/// What came of a command. Refused: the printer, or the library before sending, has done nothing. Lost: no
/// usable answer (outcomes 1 to 4), so nobody knows whether it took effect.
enum class Fate { Done, Refused, Lost };

/// What the printer says of itself; numbers and amounts are those of the kind of document to be printed.
struct Counters {
  int document = 0;  // 0: none is open
  int lastNumber = 0;
  std::optional<Cents> dayNet;  // without tax, of the documents of the day; not known while one is open
};
inline constexpr int partiallyClosed = 4;

enum class Action { AskCounters, SendStep, Cancel, Finish, Stop };

enum class Verdict {
  Printed,
  PrintedInPart,  // closed and counted, but extra lines may be missing
  NotPrinted,
  Unknown,
  StillOpen,        // not counted; the printer refuses to cancel it
  StillToBeClosed,  // partially closed; the printer refuses the definitive close
  OpenBefore,       // a document was open before; nothing was sent
  Unreachable       // the printer did not give its counters at the start; nothing was sent
};

/// Whether a document that adds `net` to the day's amounts was counted between the two: Printed, NotPrinted or
/// Unknown. No document is open now.
Verdict judgedByCounters(const Counters& before, const Counters& now, Cents net);

class SaleMachine {
 public:
  /// `net` is what the document adds to the day's amounts.
  SaleMachine(std::size_t steps, Cents net) : steps_(steps), net_(net) {}

  /// That of a sale which was cut short after `before`, when its document may be open: it is only judged.
  static SaleMachine resumed(const Counters& before, Cents net);

  Action next() const;
  /// The step that SendStep means.
  std::size_t step() const { return step_; }
  /// After Stop.
  Verdict verdict() const { return verdict_; }

  /// No further step is to be sent: the document is cancelled or, when it is partially closed, finished.
  void interrupt();
  /// What the printer said before the first step.
  const Counters& before() const { return before_; }
  /// Whether the document may have been opened on the paper.
  bool wasOpened() const { return wasOpened_; }

  /// The fate of a step, a cancellation or a finishing close.
  void sent(Fate fate);
  /// The answer to AskCounters; nothing when it could not be had, however often it was asked.
  void counted(const std::optional<Counters>& now);

 private:
  enum class State { Starting, Printing, Judging, Cancelling, Finishing, Ended };

  void start(const Counters& now);
  void judge(const Counters& now);
  Verdict printed() const;
  void tryToEnd(State how);
  void end(Verdict verdict);

  std::size_t steps_;
  Cents net_;
  State state_ = State::Starting;
  std::size_t step_ = 0;
  int attempts_ = 0;  // to cancel or to finish
  bool wasOpened_ = false;
  Counters before_;
  Verdict verdict_ = Verdict::Unknown;
};

}  // namespace zentaro::tools
