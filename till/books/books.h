// The books: every job of a machine's users, from its acceptance to what came of it. Rows are never deleted, and
// no clock decides anything.
//
//     put() --> Queued --begin()--> Printing --finish()--> Printed, NotPrinted or Unknown
//                 ^ '--withdraw()--> NotPrinted  |                                  '--finding()--> Printed or
//                 '----------requeue()-----------'                                                  NotPrinted
//     open() ---------------------> Printing
//
// Each change is on the disk when the call returns, and each is one transaction: a failure leaves the books as
// they were. Every failure is a BooksError. One thread a Books; each thread and process opens its own.
//
// Printing does not say that somebody is printing: the Claim on the job's machine does (claims.h). Whoever has that
// claim judges the open questions of the machine before anything is begun there.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "till/books/job.h"
#include "till/books/sqlite.h"

namespace zentaro::till {

/// $ZENTARO_BOOKS; else the machine's books where their folder exists; else the user's.
std::string booksPath();

class Books {
 public:
  /// Makes them where there are none.
  explicit Books(const std::string& path, const LockPatience& patience = {});
  /// Those of booksPath(), with what an old journal of this account holds.
  explicit Books(const LockPatience& patience = {});

  /// From now on, for locks of others. Before an opening 10 s, inside a sale 5 s.
  void patience(LockPatience patience) { database_.patience(std::move(patience)); }
  const std::string& path() const { return database_.path(); }

  // --- What is in them ---

  std::optional<Job> find(std::string_view id) const;
  std::optional<Job> at(std::int64_t key) const;

  struct Filter {
    std::string printer = {};  // empty: all
    std::optional<State> state = {};
  };
  /// In the order of their revisions, at most `most`.
  std::vector<Job> changedAfter(std::int64_t revision, const Filter& filter, int most = 100) const;
  /// In the order in which they were accepted.
  std::vector<Job> queued(std::string_view owner, std::string_view printer) const;
  /// The latest, oldest of them first.
  std::vector<Job> latest(int most) const;
  /// Those whose attempt began from `begin` on and before `end`, by the clock of the machine: for people.
  std::vector<Job> begunBetween(Moment begin, Moment end) const;
  /// Of that machine: those that are printing or unknown; `judgeable`: but for those beyond counters.
  std::vector<Job> unsettled(std::string_view machine) const;
  std::vector<Job> judgeable(std::string_view machine) const;
  /// With one of the digests: unsettled, or printed while nobody was told.
  std::vector<Job> openWithDigest(std::string_view digest, std::string_view oldDigest) const;
  /// The state of another job, or of an earlier attempt, that has this number.
  std::optional<State> otherHolder(const Job& job, std::int64_t number) const;
  /// The highest number of a document of that kind; nothing where there is none.
  std::optional<std::int64_t> highestNumber(std::string_view machine, Kind kind) const;

  /// Of the last change of a job's state.
  std::int64_t revision() const;
  /// Differs after another connection changed anything.
  std::int64_t dataVersion() const { return database_.number("PRAGMA data_version"); }
  /// Raises BooksError unless the file is in order: 0.12 s for a million jobs.
  void check() const;

  std::string remembered(std::string_view name) const;
  void remember(std::string_view name, std::string_view value);

  // --- What changes them ---

  /// Several calls as one transaction; nothing stays of it when `work` raises.
  void together(const std::function<void()>& work);

  /// A new job that waits; a job that was not printed and is wanted again becomes its next attempt. Nothing, and
  /// no change, when the id is queued, printing, printed or unknown.
  /// The centre of a chain counts the attempts of its jobs itself: `attempt` is the least number.
  std::optional<Job> put(const Order& order, int attempt = 1);
  /// The same for a job that begins at once: what the printer is sent next opens its document.
  std::optional<Job> open(const Order& order, const Evidence& before);

  /// A queued job begins; false unless it is still queued, for this owner and in this attempt.
  bool begin(const Job& job, const Evidence& before);
  /// It was refused before anything was opened, and waits again. The revision changes with the cause only.
  void requeue(const Job& job, std::string_view cause);
  /// Why a queued job waits.
  void waits(const Job& job, std::string_view cause);

  /// Each of these is written before the frame that it announces. A job that is no longer printing in this attempt,
  /// because somebody judged it, raises BooksError: nothing more may then be sent for it but what ends its document,
  /// which an unknown job may have open yet.
  void opened(const Job& job, const std::optional<std::int64_t>& number);
  void turn(const Job& job, Turn turn);

  /// False, and no change, for a job that is final by now, unless it is found to be printed after all. A number
  /// that is known stays where the outcome has none.
  bool finish(const Job& job, const Outcome& outcome);
  void told(const Job& job);

  /// False unless it is queued, and for this owner where one is named.
  bool withdraw(std::string_view id, std::string_view verdict, std::string_view cause);
  /// What a person saw on the paper. False unless it is unsettled; that nobody prints it is the caller's to know.
  bool finding(const Job& job, bool isPrinted);

  /// Jobs from elsewhere, with what came of them; those of an owner that is known are only brought up to date.
  void takeOver(const std::vector<Job>& jobs);

  /// A job of another's books as it is there, in place of what is known of this attempt or an earlier one.
  void learn(Job job);

  /// The bodies of final jobs that ended before; at most `most`. finish() does it for those older than 60 days.
  void blankBodies(Moment endedBefore, int most);

 private:
  std::optional<Job> enter(const Order& order, State state, const Evidence& before, int attempt);
  void takeOver(Job job);
  void update(std::int64_t key, const Job& job);
  /// A row of its own, or the next attempt of the one that has its key.
  void insert(Job& job);
  bool change(std::string_view assignments, const Job& job, std::string_view condition,
              const std::function<void(Statement&)>& bind);

  Database database_;
};

}  // namespace zentaro::till
