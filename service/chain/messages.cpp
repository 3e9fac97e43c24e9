// Texts and values. What comes from elsewhere is taken whole or not at all.
#include "service/chain/messages.h"

#include <array>

namespace zentaro::service {

using till::Job;
using till::Kind;
using till::State;

namespace {

constexpr std::string_view topicRoot = "zentaro/1/";

// Raises Json::exception or std::invalid_argument for what is no such message.
template <class Read>
auto parsed(std::string_view text, const Read& read) -> std::optional<decltype(read(Json()))> {
  const Json json = Json::parse(text, nullptr, false);
  if (!json.is_object()) return std::nullopt;
  try {
    return read(json);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

template <class Value, std::size_t Count>
Value named(const Json& json, const char* member, const std::array<Value, Count>& values) {
  const std::string name = json.at(member);
  for (const Value value : values)
    if (till::nameOf(value) == name) return value;
  throw std::invalid_argument(name);
}

Json json(const Seen& seen) { return {{"lineage", seen.lineage}, {"revision", seen.revision}}; }

std::int64_t counted(const Json& json, const char* member) {
  const std::int64_t value = json.at(member).get<std::int64_t>();
  if (value < 0 || value > 1'000'000'000'000'000) throw std::invalid_argument(member);
  return value;
}

Seen seenFrom(const Json& json) { return {json.at("lineage"), counted(json, "revision")}; }

Json json(const Job& job) {
  return {{"id", job.id},
          {"printer", job.printer},
          {"kind", till::nameOf(job.kind)},
          {"attempt", job.attempt},
          {"digest", job.digest},
          {"total", job.total},
          {"state", till::nameOf(job.state)},
          {"verdict", job.verdict},
          {"number", orNull(job.number)},
          {"machine", job.before.machine},
          {"result", job.result},
          {"cause", job.cause},
          {"accepted", job.accepted},
          {"begun", job.begun},
          {"ended", job.ended}};
}

Job jobFrom(const Json& json) {
  Job job;
  job.id = json.at("id");
  if (!till::isJobId(job.id)) throw std::invalid_argument("id");
  job.printer = json.at("printer");
  job.kind = named(json, "kind", std::array{Kind::Invoice, Kind::CreditNote, Kind::X, Kind::Z});
  job.attempt = static_cast<int>(counted(json, "attempt"));
  job.digest = json.at("digest");
  job.total = json.at("total");
  job.state =
      named(json, "state",
            std::array{State::Queued, State::Printing, State::Printed, State::NotPrinted, State::Unknown});
  job.verdict = json.at("verdict");
  if (!json.at("number").is_null()) job.number = counted(json, "number");
  job.before.machine = json.at("machine");
  job.result = json.at("result");
  job.cause = json.at("cause");
  job.accepted = counted(json, "accepted");
  job.begun = counted(json, "begun");
  job.ended = counted(json, "ended");
  return job;
}

}  // namespace

std::optional<Topic> parseTopic(std::string_view topic) {
  if (!topic.starts_with(topicRoot)) return std::nullopt;
  topic.remove_prefix(topicRoot.size());
  const std::size_t slash = topic.find('/');
  if (slash == std::string_view::npos || !isTillName(topic.substr(0, slash))) return std::nullopt;
  return Topic{std::string(topic.substr(0, slash)), std::string(topic.substr(slash + 1))};
}

std::string topicOf(const std::string& till, std::string_view kind) {
  return std::string(topicRoot) + till + "/" + std::string(kind);
}

bool isTillName(std::string_view text) {
  constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-.";
  constexpr std::size_t longest = 40;
  return !text.empty() && text.size() <= longest && text.find_first_not_of(letters) == std::string_view::npos;
}

std::string printerOf(const std::string& till, const std::string& printer) { return till + ":" + printer; }

std::string textOf(const JobMessage& message) {
  return jsonLine({{"id", message.id},
                   {"printer", message.printer},
                   {"attempt", message.attempt},
                   {"patience", message.patience},
                   {"body", message.body}});
}

std::optional<JobMessage> parseJobMessage(std::string_view text) {
  return parsed(text, [](const Json& json) {
    JobMessage message{json.at("id"), json.at("printer"), static_cast<int>(counted(json, "attempt")),
                       counted(json, "patience"), json.at("body")};
    constexpr int mostAttempts = 1'000'000, longestPatience = 3'600;
    if (!till::isJobId(message.id) || message.attempt < 1 || message.attempt > mostAttempts ||
        message.patience > longestPatience)
      throw std::invalid_argument("job");
    return message;
  });
}

std::string textOf(const Seen& seen) { return jsonLine(json(seen)); }

std::optional<Seen> parseSeen(std::string_view text) { return parsed(text, seenFrom); }

std::string textOf(const Results& results) {
  Json jobs = Json::array();
  for (const Job& job : results.jobs) jobs.push_back(json(job));
  return jsonLine({{"after", results.after},
                   {"upTo", json(results.upTo)},
                   {"fromStart", results.isFromStart},
                   {"jobs", jobs}});
}

std::optional<Results> parseResults(std::string_view text) {
  return parsed(text, [](const Json& json) {
    Results results{counted(json, "after"), seenFrom(json.at("upTo")), json.at("fromStart"), {}};
    for (const Json& job : json.at("jobs")) results.jobs.push_back(jobFrom(job));
    return results;
  });
}

std::string textOf(const Status& status) {
  Json text{{"online", status.isOnline}};
  if (status.isOnline)
    text.update({{"version", status.version},
                 {"blocked", status.blocked},
                 {"now", json(status.now)},
                 {"told", status.told ? json(*status.told) : Json(nullptr)},
                 {"printers", status.printers}});
  return jsonLine(text);
}

std::optional<Status> parseStatus(std::string_view text) {
  return parsed(text, [](const Json& json) {
    Status status;
    status.isOnline = json.at("online");
    if (!status.isOnline) return status;
    status.version = json.at("version");
    status.blocked = json.at("blocked");
    status.now = seenFrom(json.at("now"));
    if (!json.at("told").is_null()) status.told = seenFrom(json.at("told"));
    for (const Json& printer : json.at("printers")) {
      const bool isVirtual = printer.at("virtual"),
                 isWord = isTillName(printer.at("name").get<std::string>());
      const std::string state = printer.at("state");
      if (!isWord || state.empty()) throw std::invalid_argument(isVirtual ? "virtual" : "printer");
      status.printers.push_back(printer);
    }
    return status;
  });
}

}  // namespace zentaro::service
