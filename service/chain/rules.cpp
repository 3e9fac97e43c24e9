// The rules, each a few lines.
#include "service/chain/rules.h"

#include <algorithm>

#include "service/jobs/put.h"

namespace zentaro::service {

using till::Job;
using till::State;

namespace {

std::string_view versionOf(std::string_view digest) { return digest.substr(0, digest.find_first_of(":-")); }

// Digests of two rules cannot be compared; then the id speaks for itself.
bool isOther(const std::string& one, const std::string& other) {
  return !one.empty() && !other.empty() && one != other && versionOf(one) == versionOf(other);
}

// How much is known of a job in this state.
int weightOf(State state) {
  switch (state) {
    case State::Queued: return 0;
    case State::Printing: return 1;
    case State::Unknown: return 2;
    case State::NotPrinted: return 3;
    case State::Printed: break;
  }
  return 4;
}

}  // namespace

int spanOfReturn(int last, bool wasConnected, int spread) {
  constexpr int first = 8;
  return wasConnected ? spread : std::min(spread, last == 0 ? first : last * 2);
}

Reply replyTo(const JobMessage& message, const std::string& digest, bool isInOrder,
              const std::optional<Job>& known) {
  const bool isNext = known && known->state == State::NotPrinted && message.attempt > known->attempt;
  if (known && !isNext) return isOther(digest, known->digest) ? Reply::Foreign : Reply::Result;
  return isInOrder && message.patience > 0 ? Reply::Accept : Reply::Refuse;
}

std::string textOf(const std::vector<Lineage>& lineages) {
  Json list = Json::array();
  for (const Lineage& lineage : lineages) list.push_back({lineage.name, lineage.first});
  return jsonLine(list);
}

std::vector<Lineage> lineagesFrom(std::string_view text) {
  std::vector<Lineage> lineages;
  for (const Json& entry : Json::parse(text.empty() ? "[]" : text))
    lineages.push_back({entry.at(0), entry.at(1)});
  return lineages;
}

// Of an earlier start no revision can have been seen that belongs to the one after it.
bool areOlder(const std::vector<Lineage>& lineages, std::int64_t now, const Seen& seen) {
  for (std::size_t index = 0; index < lineages.size(); ++index) {
    if (lineages[index].name != seen.lineage) continue;
    const std::int64_t last = index + 1 < lineages.size() ? lineages[index + 1].first - 1 : now;
    return seen.revision > last;
  }
  return true;
}

bool isNews(const Job& known, const Job& told) {
  if (known.attempt != told.attempt) return known.attempt < told.attempt;
  if (weightOf(told.state) != weightOf(known.state)) return weightOf(told.state) > weightOf(known.state);
  return told.verdict != known.verdict || told.cause != known.cause || told.number != known.number ||
         told.result != known.result;
}

bool isOrdered(const std::optional<Job>& known, const std::string& till, const Job& told) {
  return known && known->printer == printerOf(till, told.printer) && !isOther(known->digest, told.digest);
}

Seen seenAfter(const Seen& seen, const Results& results) {
  if (results.upTo.lineage.empty()) return seen;
  if (results.isFromStart && results.upTo.lineage != seen.lineage) return results.upTo;
  const bool isNext = results.after <= seen.revision && results.upTo.revision >= seen.revision;
  return isNext ? results.upTo : seen;
}

bool wasRestored(const Seen& seen, const std::optional<Seen>& told) {
  return told && told->revision > seen.revision;
}

}  // namespace zentaro::service
