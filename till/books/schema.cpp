// How the books are made, and how jobs become rows and rows jobs.
#include "till/books/schema.h"

#include <array>
#include <filesystem>
#include <thread>

#include "base/files/paths.h"
#include "base/system/environment.h"
#include "base/system/places.h"
#include "base/system/shared_file.h"
#include "till/books/books.h"

namespace zentaro::till {

namespace {

constexpr int version = 1, application = 0x5A4E5452;  // "ZNTR"

constexpr const char* tables = R"(
  CREATE TABLE job(
    seq INTEGER PRIMARY KEY, id TEXT UNIQUE, owner TEXT NOT NULL, printer TEXT NOT NULL, kind TEXT NOT NULL,
    attempt INTEGER NOT NULL, digest TEXT NOT NULL, body TEXT NOT NULL, net INTEGER NOT NULL,
    total INTEGER NOT NULL, patience INTEGER NOT NULL, boot TEXT NOT NULL, uptime INTEGER NOT NULL,
    state TEXT NOT NULL, verdict TEXT NOT NULL, machine TEXT NOT NULL, before_number INTEGER NOT NULL,
    before_day INTEGER, last_z INTEGER, turn TEXT NOT NULL, reached_close INTEGER NOT NULL, number INTEGER,
    result TEXT NOT NULL, cause TEXT NOT NULL, told INTEGER NOT NULL, beyond INTEGER NOT NULL,
    accepted INTEGER NOT NULL, begun INTEGER NOT NULL, ended INTEGER NOT NULL, revision INTEGER NOT NULL);
  CREATE INDEX job_revision ON job(revision);
  CREATE INDEX job_queue ON job(owner, printer) WHERE state = 'queued';
  CREATE INDEX job_unsettled ON job(machine) WHERE state IN ('printing', 'unknown');
  CREATE INDEX job_unsettled_digest ON job(digest) WHERE state IN ('printing', 'unknown');
  CREATE INDEX job_untold ON job(digest) WHERE told = 0 AND state = 'printed';
  CREATE INDEX job_number ON job(machine, kind, number) WHERE number IS NOT NULL;
  CREATE INDEX job_body ON job(ended) WHERE body <> '' AND state IN ('printed', 'not-printed');
  CREATE TABLE attempt AS SELECT * FROM job;
  CREATE UNIQUE INDEX attempt_key ON attempt(seq, attempt);
  CREATE INDEX attempt_number ON attempt(machine, kind, number) WHERE number IS NOT NULL;
  CREATE TABLE meta(key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;
)";

// The change of the journal's mode does not wait by itself.
void switchToWal(const Database& database, std::chrono::milliseconds patience) {
  constexpr std::chrono::milliseconds pause{10};
  for (std::chrono::milliseconds waited{0};; waited += pause) {
    try {
      return database.run("PRAGMA journal_mode = WAL");
    } catch (const BooksError& error) {
      if (error.cause() != BooksError::Cause::Locked || waited >= patience) throw;
    }
    std::this_thread::sleep_for(pause);
  }
}

void makeTables(const Database& database) {
  database.run("BEGIN IMMEDIATE");
  try {
    if (database.number("PRAGMA user_version") == 0) {
      if (database.number("SELECT count(*) FROM sqlite_schema") != 0)
        throw BooksError(BooksError::Cause::Unusable, database.path(), "another program's database");
      database.run(tables);
      database.run(("PRAGMA application_id = " + std::to_string(application)).c_str());
      database.run(("PRAGMA user_version = " + std::to_string(version)).c_str());
    }
    database.run("COMMIT");
  } catch (const BooksError&) {
    if (database.isInTransaction()) database.run("ROLLBACK");
    throw;
  }
}

bool isThere(const std::string& path) {
  std::error_code failed;
  return std::filesystem::file_size(files::pathOf(path), failed) > 0 && !failed;
}

template <class Value, std::size_t Count>
Value named(const std::string& name, const std::array<Value, Count>& values, const std::string& path) {
  for (const Value value : values)
    if (nameOf(value) == name) return value;
  throw BooksError(BooksError::Cause::Damaged, path, "\"" + name.substr(0, 40) + "\"");
}

// What is computed with later stays far from the ends of its type.
std::int64_t plausible(std::int64_t value, const std::string& path) {
  constexpr std::int64_t most = 1'000'000'000'000'000;
  if (value < -most || value > most)
    throw BooksError(BooksError::Cause::Damaged, path, std::to_string(value));
  return value;
}

}  // namespace

std::string booksPath() {
  if (const std::string named = system::variable("ZENTARO_BOOKS"); !named.empty())
    return files::textOf(std::filesystem::absolute(files::pathOf(named)));
  const std::filesystem::path ofTheMachine = system::machineStateFolder();
  std::error_code failed;
  const bool hasMachineFolder = std::filesystem::is_directory(ofTheMachine, failed);
  return files::textOf((hasMachineFolder ? ofTheMachine : system::userStateFolder()) / "books.db");
}

std::string madeFile(const std::string& path) {
  const std::filesystem::path file = files::pathOf(path);
  std::error_code failed;
  // Required: a database that lost its file must not pass for a new one, its log would be thrown away.
  const bool isEmpty = !isThere(path);
  if (isEmpty && isThere(path + "-wal"))
    throw BooksError(BooksError::Cause::Damaged, path, "the file is gone, its log is not");
  try {
    system::makeFolders(file.parent_path());
    system::makeShared(file);
  } catch (const std::system_error& error) {
    throw BooksError(BooksError::Cause::Unusable, path, error.what());
  }
  if (!std::filesystem::is_regular_file(file, failed))
    throw BooksError(BooksError::Cause::Unusable, path, "not a file");
  return path;
}

void setUp(const Database& database, const std::chrono::milliseconds& patience) {
  switchToWal(database, patience);
  database.run("PRAGMA synchronous = FULL; PRAGMA trusted_schema = OFF; PRAGMA cell_size_check = ON");
  if (database.number("PRAGMA user_version") == 0) makeTables(database);
  const std::int64_t found = database.number("PRAGMA user_version");
  if (database.number("PRAGMA application_id") != application)
    throw BooksError(BooksError::Cause::Unusable, database.path(), "another program's database");
  if (found != version)
    throw BooksError(BooksError::Cause::Unusable, database.path(),
                     "made by a newer zentaro, version " + std::to_string(found));
}

Job jobFrom(const Statement& row, const std::string& path) {
  int column = 0;
  const auto number = [&] { return plausible(row.number(column++), path); };
  const auto text = [&] { return row.text(column++); };
  const auto optionalNumber = [&] {
    if (!row.isNull(column)) return std::optional(number());
    ++column;
    return std::optional<std::int64_t>();
  };
  Job job;
  job.key = number();
  job.id = text();
  job.owner = text();
  job.printer = text();
  job.kind = named(text(), std::array{Kind::Invoice, Kind::CreditNote, Kind::X, Kind::Z}, path);
  constexpr std::int64_t mostAttempts = 1'000'000;
  job.attempt = static_cast<int>(std::min(number(), mostAttempts));
  job.digest = text();
  job.body = text();
  job.net = number();
  job.total = number();
  job.patience = std::chrono::seconds(number());
  job.boot = text();
  job.uptime = number();
  job.state = named(
      text(), std::array{State::Queued, State::Printing, State::Printed, State::NotPrinted, State::Unknown},
      path);
  job.verdict = text();
  job.before.machine = text();
  job.before.lastNumber = number();
  job.before.dayAmount = optionalNumber();
  job.before.lastZ = optionalNumber();
  job.turn = named(
      text(), std::array{Turn::None, Turn::Open, Turn::Lines, Turn::Close, Turn::Finish, Turn::Cancel}, path);
  job.reachedClose = number() != 0;
  job.number = optionalNumber();
  job.result = text();
  job.cause = text();
  job.isTold = number() != 0;
  job.isBeyondCounters = number() != 0;
  job.accepted = number();
  job.begun = number();
  job.ended = number();
  job.revision = number();
  return job;
}

void bindJob(Statement& statement, const Job& job) {
  statement.with(job.key == 0 ? std::nullopt : std::optional(job.key))
      .with(job.id.empty() ? std::nullopt : std::optional<std::string_view>(job.id))
      .with(job.owner)
      .with(job.printer)
      .with(nameOf(job.kind))
      .with(job.attempt)
      .with(job.digest)
      .with(job.body)
      .with(job.net)
      .with(job.total)
      .with(std::int64_t{job.patience.count()})
      .with(job.boot)
      .with(job.uptime)
      .with(nameOf(job.state))
      .with(job.verdict)
      .with(job.before.machine)
      .with(job.before.lastNumber)
      .with(job.before.dayAmount)
      .with(job.before.lastZ)
      .with(nameOf(job.turn))
      .with(job.reachedClose)
      .with(job.number)
      .with(job.result)
      .with(job.cause)
      .with(job.isTold)
      .with(job.isBeyondCounters)
      .with(job.accepted)
      .with(job.begun)
      .with(job.ended)
      .with(job.revision);
}

}  // namespace zentaro::till
