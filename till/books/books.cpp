// The changes of the books: each a transaction that sees the rows as they are.
#include "till/books/books.h"

#include <ctime>

#include "till/books/schema.h"

namespace zentaro::till {

namespace {

constexpr std::string_view isPrintingNow = "state = 'printing'";
constexpr std::string_view isQueuedNow = "state = 'queued'";
constexpr std::string_view isUnsettledNow = "state IN ('printing', 'unknown')";
constexpr std::string_view nextRevision = "revision = (SELECT max(revision) + 1 FROM job)";

Moment now() { return std::time(nullptr); }

// What opens a closing is all of it.
bool isClosing(Kind kind) { return kind == Kind::X || kind == Kind::Z; }

}  // namespace

Books::Books(const std::string& path, const LockPatience& patience) : database_(madeFile(path), patience) {
  setUp(database_, patience.longest);
}

// Required: immediate. A transaction that reads first and writes later would fail where it should wait.
void Books::together(const std::function<void()>& work) {
  if (database_.isInTransaction()) return work();
  if (database_.hasMoved()) throw BooksError(BooksError::Cause::Gone, path(), "removed or replaced");
  database_.run("BEGIN IMMEDIATE");
  try {
    work();
    database_.run("COMMIT");
  } catch (...) {  // also what the caller's part raises
    if (database_.isInTransaction()) database_.run("ROLLBACK");
    throw;
  }
}

std::optional<Job> Books::put(const Order& order, int attempt) {
  return enter(order, State::Queued, {}, attempt);
}

std::optional<Job> Books::open(const Order& order, const Evidence& before) {
  return enter(order, State::Printing, before, 1);
}

std::optional<Job> Books::enter(const Order& order, State state, const Evidence& before, int attempt) {
  std::optional<Job> entered;
  together([&] {
    const std::optional<Job> known = order.id.empty() ? std::nullopt : find(order.id);
    if (known && known->state != State::NotPrinted) return;
    Job job;
    static_cast<Order&>(job) = order;
    job.state = state;
    job.before = before;
    job.accepted = now();
    job.revision = revision() + 1;
    if (state == State::Printing) {
      job.reachedClose = isClosing(order.kind);
      job.turn = job.reachedClose ? Turn::Close : Turn::Open;
      job.begun = job.accepted;
    }
    if (known) {
      job.key = known->key;
      job.attempt = known->attempt + 1;
    }
    job.attempt = std::max(job.attempt, attempt);
    insert(job);
    entered = job;
  });
  return entered;
}

void Books::insert(Job& job) {
  if (job.key != 0) {
    database_.prepare("INSERT INTO attempt SELECT * FROM job WHERE seq = ?").with(job.key).run();
    database_.prepare("UPDATE attempt SET body = '' WHERE seq = ?").with(job.key).run();
    database_.prepare("DELETE FROM job WHERE seq = ?").with(job.key).run();
  }
  std::string marks = "?";
  for (const char c : jobColumns) marks += c == ',' ? ",?" : "";
  Statement insertion = database_.prepare("INSERT INTO job(" + std::string(jobColumns) + ") VALUES(" + marks +
                                          ") RETURNING seq");
  bindJob(insertion, job);
  if (insertion.next()) job.key = insertion.number(0);
  insertion.run();
}

// One row, as long as the condition holds and nobody has begun another attempt.
bool Books::change(std::string_view assignments, const Job& job, std::string_view condition,
                   const std::function<void(Statement&)>& bind) {
  bool isChanged = false;
  together([&] {
    Statement update = database_.prepare("UPDATE job SET " + std::string(assignments) + " WHERE (" +
                                         std::string(condition) + ") AND seq = ? AND attempt = ?");
    bind(update);
    update.with(job.key).with(job.attempt).run();
    isChanged = database_.changes() == 1;
  });
  return isChanged;
}

bool Books::begin(const Job& job, const Evidence& before) {
  const std::string assignments =
      "revision = iif(cause = '', (SELECT max(revision) + 1 FROM job), revision), state = 'printing', "
      "reached_close = kind IN ('X', 'Z'), turn = iif(kind IN ('X', 'Z'), 'close', 'open'), machine = ?, before_number = ?, before_day = ?, last_z = ?, begun = ?";
  return change(assignments, job, std::string(isQueuedNow) + " AND owner = ?", [&](Statement& update) {
    update.with(before.machine).with(before.lastNumber).with(before.dayAmount).with(before.lastZ).with(now());
    update.with(job.owner);
  });
}

void Books::requeue(const Job& job, std::string_view cause) {
  const std::string assignments =
      "revision = iif(cause = ?, revision, (SELECT max(revision) + 1 FROM job)), state = 'queued', turn = '', "
      "reached_close = 0, machine = '', before_number = 0, before_day = NULL, last_z = NULL, begun = 0, cause = ?";
  const bool isDone = change(assignments, job, "state = 'printing' AND (turn = 'open' OR kind IN ('X', 'Z'))",
                             [&](Statement& update) { update.with(cause).with(cause); });
  if (!isDone) throw BooksError(BooksError::Cause::Settled, path(), "requeue");
}

void Books::waits(const Job& job, std::string_view cause) {
  change(std::string(nextRevision) + ", cause = ?", job, std::string(isQueuedNow) + " AND cause <> ?",
         [&](Statement& update) { update.with(cause).with(cause); });
}

void Books::opened(const Job& job, const std::optional<std::int64_t>& number) {
  const std::string assignments =
      "revision = iif(cause = '', revision, (SELECT max(revision) + 1 FROM job)), cause = '', turn = 'lines', "
      "number = ?";
  const bool isDone =
      change(assignments, job, isPrintingNow, [&](Statement& update) { update.with(number); });
  if (!isDone) throw BooksError(BooksError::Cause::Settled, path(), "lines");
}

void Books::turn(const Job& job, Turn turn) {
  const std::string_view reached = turn == Turn::Close || turn == Turn::Finish ? ", reached_close = 1" : "";
  const bool endsWhatIsOpen = turn == Turn::Finish || turn == Turn::Cancel;
  const bool isDone =
      change("turn = ?" + std::string(reached), job, endsWhatIsOpen ? isUnsettledNow : isPrintingNow,
             [&](Statement& update) { update.with(nameOf(turn)); });
  if (!isDone) throw BooksError(BooksError::Cause::Settled, path(), std::string(nameOf(turn)));
}

bool Books::finish(const Job& job, const Outcome& outcome) {
  const std::string assignments =
      std::string(nextRevision) +
      ", state = ?, verdict = ?, number = coalesce(?, number), result = ?, cause = ?, beyond = ?, told = ?, ended = ?";
  const bool isNews =
      change(assignments, job, "state IN ('printing', 'unknown') OR ? = 'printed'", [&](Statement& update) {
        update.with(nameOf(outcome.state)).with(outcome.verdict).with(outcome.number).with(outcome.result);
        update.with(outcome.cause).with(outcome.isBeyondCounters).with(outcome.isTold).with(now());
        update.with(nameOf(outcome.state));
      });
  constexpr Moment sixtyDays = 60LL * 24 * 60 * 60;
  constexpr int aFew = 20;
  blankBodies(now() - sixtyDays, aFew);
  return isNews;
}

void Books::told(const Job& job) {
  change("told = 1", job, "true", [](Statement&) {});
}

bool Books::withdraw(std::string_view id, std::string_view verdict, std::string_view cause) {
  const std::optional<Job> job = find(id);
  if (!job) return false;
  return change(
      std::string(nextRevision) + ", state = 'not-printed', verdict = ?, cause = ?, told = 1, ended = ?",
      *job, isQueuedNow, [&](Statement& update) { update.with(verdict).with(cause).with(now()); });
}

bool Books::finding(const Job& job, bool isPrinted) {
  const std::string_view state = nameOf(isPrinted ? State::Printed : State::NotPrinted);
  return change(std::string(nextRevision) + ", state = ?, verdict = ?, told = 1, ended = ?", job,
                isUnsettledNow, [&](Statement& update) { update.with(state).with(state).with(now()); });
}

void Books::blankBodies(Moment endedBefore, int most) {
  together([&] {
    database_
        .prepare(
            "UPDATE job SET body = '' WHERE seq IN (SELECT seq FROM job WHERE body <> '' AND "
            "state IN ('printed', 'not-printed') AND ended < ? LIMIT ?)")
        .with(endedBefore)
        .with(most)
        .run();
  });
}

void Books::remember(std::string_view name, std::string_view value) {
  together([&] { database_.prepare("REPLACE INTO meta VALUES(?, ?)").with(name).with(value).run(); });
}

}  // namespace zentaro::till
