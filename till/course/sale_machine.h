// The course of a sale, without printer or clock: what happened goes in, what to do next comes out. It never
// sends a step twice. When a step fails or its answer is lost it asks for the counters and goes by them:
//
//   Starting --counters, nothing open--> Printing --last step done--> printed
//                                           | a step refused, its answer lost, or an interruption
//                                           v
//     +---------------------------------> Judging --nothing open--> printed, not printed or unknown,
//     |                                     |  |                    by the counters
//     |                 its own document is |  |  it is partially closed
//     |                 open                v  +-----> Finishing --done--> printed, extra lines missing
//     +-- whatever came of it -- Cancelling             |
//     +-- refused or lost ------------------------------+
//
// What the counters prove is the rule of evidence.h, the same as for a sale whose process has died.
#pragma once

#include <cstddef>
#include <optional>

#include "till/books/evidence.h"
#include "till/course/reply.h"
#include "till/course/verdict.h"

namespace zentaro::till {

/// The state of a document that is paid and can no longer be cancelled.
inline constexpr int partiallyClosed = 4;

enum class Action { AskCounters, SendStep, Cancel, Finish, Stop };

class SaleMachine {
 public:
  /// The first close is the first step that may count the document. Of the job, kind and net are used.
  SaleMachine(std::size_t steps, std::size_t firstClose, const Job& job)
      : steps_(steps), firstClose_(firstClose), job_(job) {}

  /// That of a job which was cut short, when its document may be open: it is only judged. Of a document that does not
  /// bear its number nothing is said but that it is open.
  static SaleMachine resumed(const Job& job);

  Action next() const;
  /// The step that SendStep means.
  std::size_t step() const { return step_; }
  /// After Stop.
  Ending ending() const { return ending_; }
  /// Of an unknown end: that no counter will ever say more.
  bool isBeyondCounters() const { return judgement_ == Judgement::BeyondCounters; }
  /// The job as far as it got: its evidence, its turn, its number.
  const Job& job() const { return job_; }
  /// Whether the document may have been opened on the paper.
  bool wasOpened() const { return wasOpened_; }

  /// No further step is to be sent: the document is cancelled or, when it is partially closed, finished.
  void interrupt();
  /// What the opened document is called, when the printer said it.
  void opened(const std::optional<std::int64_t>& number) { job_.number = number; }
  /// The fate of a step, a cancellation or a finishing close.
  void sent(Fate fate);
  /// The answer to AskCounters; nothing when it could not be had, however often it was asked. `otherHolder` is
  /// what the books say of the number.
  void counted(const std::optional<Standing>& now, const std::optional<State>& otherHolder = {});

 private:
  enum class Phase { Starting, Printing, Judging, Cancelling, Finishing, Ended };

  void start(const Standing& now);
  void judge(const Standing& now, const std::optional<State>& otherHolder);
  bool isItsOwn(const Standing& now, const std::optional<State>& otherHolder) const;
  Ending printed() const;
  void tryToEnd(Phase how);
  void end(Ending ending);

  std::size_t steps_, firstClose_;
  Job job_;
  Phase phase_ = Phase::Starting;
  std::size_t step_ = 0;
  int attempts_ = 0;  // to cancel or to finish
  bool isResumed_ = false, wasOpened_ = false;
  std::optional<Judgement> judgement_;
  Ending ending_ = Ending::Unknown;
};

}  // namespace zentaro::till
