// What is asked of the books.
#include "till/books/books.h"
#include "till/books/schema.h"

namespace zentaro::till {

namespace {

std::string selection(std::string_view rest) {
  return "SELECT " + std::string(jobColumns) + " FROM job " + std::string(rest);
}

std::vector<Job> all(Statement statement, const std::string& path) {
  std::vector<Job> jobs;
  while (statement.next()) jobs.push_back(jobFrom(statement, path));
  return jobs;
}

std::optional<Job> one(Statement statement, const std::string& path) {
  return statement.next() ? std::optional(jobFrom(statement, path)) : std::nullopt;
}

}  // namespace

std::optional<Job> Books::find(std::string_view id) const {
  return one(std::move(database_.prepare(selection("WHERE id = ?")).with(id)), path());
}

std::optional<Job> Books::at(std::int64_t key) const {
  return one(std::move(database_.prepare(selection("WHERE seq = ?")).with(key)), path());
}

std::vector<Job> Books::changedAfter(std::int64_t revision, const Filter& filter, int most) const {
  // The few that are not settled have an index of their own, which "+" makes the query take.
  const bool areFew = filter.state == State::Printing || filter.state == State::Unknown;
  Statement query = database_.prepare(selection(
      std::string(areFew ? "WHERE state IN ('printing', 'unknown') AND +revision" : "WHERE revision") +
      " > ? AND (? = '' OR printer = ?) AND (? IS NULL OR state = ?) ORDER BY " + (areFew ? "+" : "") +
      "revision LIMIT ?"));
  const auto state = filter.state ? std::optional(nameOf(*filter.state)) : std::nullopt;
  query.with(revision).with(filter.printer).with(filter.printer).with(state).with(state).with(most);
  return all(std::move(query), path());
}

std::vector<Job> Books::queued(std::string_view owner, std::string_view printer) const {
  Statement query = database_.prepare(
      selection("WHERE state = 'queued' AND owner = ? AND printer = ? ORDER BY accepted, seq"));
  return all(std::move(query.with(owner).with(printer)), path());
}

std::vector<Job> Books::latest(int most) const {
  Statement query = database_.prepare(
      selection("WHERE seq IN (SELECT seq FROM job ORDER BY seq DESC LIMIT ?) ORDER BY seq"));
  return all(std::move(query.with(most)), path());
}

std::vector<Job> Books::begunBetween(Moment begin, Moment end) const {
  Statement query = database_.prepare(selection("WHERE begun >= ? AND begun < ? ORDER BY seq"));
  return all(std::move(query.with(begin).with(end)), path());
}

std::vector<Job> Books::unsettled(std::string_view machine) const {
  Statement query =
      database_.prepare(selection("WHERE state IN ('printing', 'unknown') AND machine = ? ORDER BY seq"));
  return all(std::move(query.with(machine)), path());
}

std::vector<Job> Books::judgeable(std::string_view machine) const {
  std::vector<Job> jobs = unsettled(machine);
  std::erase_if(jobs, [](const Job& job) { return job.isBeyondCounters; });
  return jobs;
}

std::vector<Job> Books::openWithDigest(std::string_view digest, std::string_view oldDigest) const {
  Statement query =
      database_.prepare(selection("WHERE state IN ('printing', 'unknown') AND digest IN (?, ?) UNION ALL ") +
                        selection("WHERE told = 0 AND state = 'printed' AND digest IN (?, ?) ORDER BY seq"));
  query.with(digest).with(oldDigest).with(digest).with(oldDigest);
  return all(std::move(query), path());
}

// What was in the books before a job was begun cannot have its number: there the printer has begun its numbers anew.
std::optional<State> Books::otherHolder(const Job& job, std::int64_t number) const {
  const auto holdersIn = [](const std::string& table) {
    return "SELECT state = 'printed' FROM " + table +
           " WHERE machine = ? AND kind = ? AND number = ? AND (seq <> ? OR attempt <> ?) AND NOT EXISTS (SELECT 1"
           " FROM job AS own WHERE own.seq = ? AND own.state = 'printing' AND own.revision > " +
           table + ".revision)";
  };
  Statement query =
      database_.prepare(holdersIn("job") + " UNION ALL " + holdersIn("attempt") + " ORDER BY 1 DESC LIMIT 1");
  for (int table = 0; table < 2; ++table) {
    query.with(job.before.machine).with(nameOf(job.kind)).with(number).with(job.key).with(job.attempt);
    query.with(job.key);
  }
  if (!query.next()) return std::nullopt;
  return query.number(0) != 0 ? State::Printed : State::Unknown;
}

std::optional<std::int64_t> Books::highestNumber(std::string_view machine, Kind kind) const {
  Statement query =
      database_.prepare("SELECT max(number) FROM job WHERE machine = ? AND kind = ? AND number IS NOT NULL");
  query.with(machine).with(nameOf(kind));
  return query.next() && !query.isNull(0) ? std::optional(query.number(0)) : std::nullopt;
}

std::int64_t Books::revision() const { return database_.number("SELECT max(revision) FROM job"); }

void Books::check() const {
  Statement query = database_.prepare("PRAGMA quick_check(1)");
  const std::string found = query.next() ? query.text(0) : "no answer";
  if (found != "ok") throw BooksError(BooksError::Cause::Damaged, path(), found);
}

std::string Books::remembered(std::string_view name) const {
  Statement query = database_.prepare("SELECT value FROM meta WHERE key = ?");
  return query.with(name).next() ? query.text(0) : std::string();
}

}  // namespace zentaro::till
