// Jobs from elsewhere beside those that are known.
#include <map>

#include "till/books/books.h"

namespace zentaro::till {

namespace {

// How much is lost when the state of a job is forgotten.
int weightOf(State state) {
  switch (state) {
    case State::NotPrinted: return 0;
    case State::Printed: return 2;
    case State::Queued:
    case State::Printing:
    case State::Unknown: break;
  }
  return 1;
}

}  // namespace

void Books::takeOver(const std::vector<Job>& jobs) {
  together([&] {
    std::map<std::string, std::int64_t> known;
    Statement owners =
        database_.prepare("SELECT owner, seq FROM job UNION ALL SELECT owner, seq FROM attempt");
    while (owners.next()) known.emplace(owners.text(0), owners.number(1));
    for (const Job& job : jobs) {
      const auto found = known.find(job.owner);
      if (found == known.end())
        takeOver(job);
      else
        update(found->second, job);
    }
  });
}

void Books::update(std::int64_t key, const Job& job) {
  const std::optional<Job> known = at(key);
  if (!known || known->owner != job.owner || known->state != State::Printing) return;
  if (job.reachedClose) turn(*known, job.turn);
  if (job.state == State::Printing) return;
  finish(*known, {.state = job.state, .verdict = job.verdict, .number = job.number, .isTold = job.isTold});
}

void Books::takeOver(Job job) {
  job.revision = revision() + 1;
  const std::optional<Job> rival = job.id.empty() ? std::nullopt : find(job.id);
  if (rival) {
    job.key = rival->key;
    job.attempt = rival->attempt + 1;
  }
  insert(job);
  if (!rival || weightOf(rival->state) <= weightOf(job.state)) return;
  // The earlier one says more: it takes the place of the job again.
  Job stronger = *rival;
  stronger.attempt = job.attempt + 1;
  stronger.revision = job.revision;
  insert(stronger);
  database_.prepare("DELETE FROM attempt WHERE seq = ? AND attempt = ?")
      .with(rival->key)
      .with(rival->attempt)
      .run();
}

void Books::learn(Job job) {
  together([&] {
    const std::optional<Job> known = find(job.id);
    if (known && known->attempt > job.attempt) return;
    job.key = known ? known->key : 0;
    job.revision = revision() + 1;
    if (known && known->attempt == job.attempt)
      database_.prepare("DELETE FROM job WHERE seq = ?").with(known->key).run();
    insert(job);
  });
}

}  // namespace zentaro::till
