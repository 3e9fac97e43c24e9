// Lines of JSON as jobs. The last line of an entry counts.
#include "till/books/old_journal.h"

#include <fstream>
#include <map>

#include "base/files/json.h"
#include "base/system/places.h"

namespace zentaro::till {

namespace {

// What cannot be read counts as absent.
std::string textAt(const Json& json, const char* name) {
  const auto found = json.find(name);
  return found != json.end() && found->is_string() ? found->get<std::string>() : std::string();
}

bool flagAt(const Json& json, const char* name) {
  const auto found = json.find(name);
  return found != json.end() && found->is_boolean() && found->get<bool>();
}

std::optional<std::int64_t> numberAt(const Json& json, const char* name) {
  constexpr std::int64_t most = 1'000'000'000'000'000;
  const auto found = json.find(name);
  if (found == json.end() || !found->is_number_integer()) return std::nullopt;
  const auto number = found->get<std::int64_t>();
  return number >= -most && number <= most ? std::optional(number) : std::nullopt;
}

State stateOf(const Json& json) {
  const std::string fact = textAt(json, "fact");
  if (fact == "printed") return State::Printed;
  if (fact == "not-printed") return State::NotPrinted;
  return json.contains("fact") && json["fact"].is_null() ? State::Printing : State::Unknown;
}

Turn turnOf(const std::string& name) {
  for (const Turn turn : {Turn::Open, Turn::Lines, Turn::Close, Turn::Finish, Turn::Cancel})
    if (nameOf(turn) == name) return turn;
  return Turn::Lines;
}

Job jobOf(const Json& json) {
  Job job;
  job.owner = "journal " + textAt(json, "name");
  job.id = textAt(json, "id");
  job.printer = textAt(json, "device");
  job.kind = flagAt(json, "creditNote") ? Kind::CreditNote : Kind::Invoice;
  job.digest = "1:" + textAt(json, "content");
  job.net = numberAt(json, "net").value_or(0);
  job.total = numberAt(json, "total").value_or(0);
  job.state = stateOf(json);
  job.verdict = job.state == State::Printing ? "" : nameOf(job.state);
  const std::optional<std::int64_t> before = numberAt(json, "numberBefore");
  job.before = {textAt(json, "machine"), before.value_or(0), numberAt(json, "dayBefore"),
                numberAt(json, "lastZ")};
  job.turn = turnOf(textAt(json, "turn"));
  job.reachedClose = job.turn == Turn::Close || job.turn == Turn::Finish;
  job.number = numberAt(json, "number");
  job.isTold = flagAt(json, "told");
  job.isBeyondCounters = !before;
  job.accepted = job.begun = job.ended = numberAt(json, "at").value_or(0);
  return job;
}

// By name, in the order in which they began. A line that a crash cut short is none.
std::vector<Job> entriesOf(const std::filesystem::path& file) {
  std::vector<Job> entries;
  std::map<std::string, std::size_t> placeOf;
  std::ifstream lines(file, std::ios::binary);
  for (std::string line; std::getline(lines, line);) {
    const Json json = Json::parse(line, nullptr, false);
    if (!json.is_object() || textAt(json, "name").empty()) continue;
    Job job = jobOf(json);
    const auto [place, isNew] = placeOf.try_emplace(job.owner, entries.size());
    if (isNew) {
      entries.push_back(std::move(job));
    } else {
      Job& known = entries[place->second];
      job.reachedClose = job.reachedClose || known.reachedClose;
      known = std::move(job);
    }
  }
  return entries;
}

// What tells a file that was read from one that has grown since; empty for none.
std::string stampOf(const std::filesystem::path& file) {
  std::error_code failed;
  const std::filesystem::file_status status = std::filesystem::status(file, failed);
  // Where this account may not even look, it has never kept one.
  const bool isElsewhere = failed == std::errc::permission_denied;
  if (isElsewhere || status.type() == std::filesystem::file_type::not_found) return {};
  if (status.type() != std::filesystem::file_type::regular || !std::ifstream(file))
    throw BooksError(BooksError::Cause::Unusable, file.string(), "an old journal that cannot be read");
  const auto changed = std::filesystem::last_write_time(file, failed).time_since_epoch().count();
  return std::to_string(std::filesystem::file_size(file, failed)) + " " + std::to_string(changed);
}

std::filesystem::path journalOfThisAccount() {
  try {
    return system::userStateFolder() / "sales.jsonl";
  } catch (const std::runtime_error&) {  // without a home
    return {};
  }
}

}  // namespace

Books::Books(const LockPatience& patience) : Books(booksPath(), patience) {
  readOldJournal(*this, journalOfThisAccount());
}

void readOldJournal(Books& books, const std::filesystem::path& file) {
  const std::string stamp = stampOf(file), name = "journal " + file.string();
  if (stamp.empty() || books.remembered(name) == stamp) return;
  const std::vector<Job> entries = entriesOf(file);
  books.together([&] {
    if (books.remembered(name) == stamp) return;
    books.takeOver(entries);
    books.remember(name, stamp);
  });
}

}  // namespace zentaro::till
