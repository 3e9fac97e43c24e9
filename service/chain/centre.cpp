// The turns of the centre's thread.
#include "service/chain/centre.h"

#include <algorithm>
#include <ctime>

#include "base/files/json.h"
#include "base/system/uptime.h"
#include "base/terminal/language.h"
#include "service/chain/books_notes.h"
#include "service/chain/till_worker.h"
#include "service/jobs/put.h"
#include "till/words/job_words.h"

namespace zentaro::service {

using namespace std::chrono_literals;
using terminal::say;
using till::Job;
using till::State;

namespace {

constexpr auto again = 30s, silence = 15s;
constexpr int ownSpread = 8;     // seconds; there is one of it
constexpr auto doubled = 10min;  // how long two with one name are told of, since one came back

// Required: by a clock that nobody sets, and 0 once the computer was started again.
std::int64_t remaining(const Job& job) {
  const system::Uptime now = system::uptime();
  if (job.boot != now.boot || now.seconds < job.uptime) return 0;
  return std::max<std::int64_t>(0, job.patience.count() - (now.seconds - job.uptime));
}

std::string localName(const std::string& till, const std::string& printer) {
  return printer.substr(till.size() + 1);
}

std::string tillOf(const std::string& printer) { return printer.substr(0, printer.find(':')); }

}  // namespace

Centre::Centre(const Settings& settings, Workers& workers, Bell& bell,
               std::function<void(const std::string&)> tell)
    : workers_{workers},
      bell_{bell},
      say_{std::move(tell)},
      books_{settings.books},
      link_{{settings.broker,
             "zentaro-centre",
             {topicOf("+", "results"), topicOf("+", "status")},
             std::nullopt,
             [this] { bell_.ring(); },
             say_,
             ownSpread}} {
  load();
  turns_.emplace(bell_, say_, [this] { turn(); });
}

void Centre::load() {
  const std::string names = books_.remembered(noteTills);
  for (const Json& entry : Json::parse(names.empty() ? "[]" : names)) {
    const std::string name = entry;
    const Json kept = Json::parse(books_.remembered(noteTill + name));
    Till& till = tills_[name];
    till.seen = {kept.at("lineage"), kept.at("revision")};
    till.accepted = kept.at("accepted");
    till.printers = kept.at("printers").get<std::set<std::string>>();
    till.since = std::time(nullptr);
    makeWorkers(name, till);
  }
  constexpr int most = 100'000;
  for (const State state : {State::Printing, State::Unknown})
    for (const Job& job : books_.changedAfter(0, {{}, state}, most))
      if (const std::string till = tillOf(job.printer); job.owner == serviceOwner && tills_.contains(till))
        published_[job.id] = {job, till, localName(till, job.printer), {}, {}};
}

void Centre::makeWorkers(const std::string& name, const Till& till) {
  for (const std::string& printer : till.printers) {
    if (workers_.find(printerOf(name, printer)) != nullptr) continue;
    workers_.add(std::make_unique<TillWorker>(*this, name, printer));
    woken_.insert(printerOf(name, printer));
  }
}

void Centre::remember(const std::string& name, const Till& till) {
  books_.remember(noteTill + name, jsonLine({{"lineage", till.seen.lineage},
                                             {"revision", till.seen.revision},
                                             {"accepted", till.accepted},
                                             {"printers", till.printers}}));
}

void Centre::turn() {
  if (const int session = link_.session(); session != session_) {
    session_ = session;
    for (const auto& [name, till] : tills_) tellSeen(name, till);
    for (auto& [id, published] : published_) published.due = {};
  }
  acceptOlderBooks();
  for (const Letter& letter : link_.take()) {
    const std::optional<Topic> topic = parseTopic(letter.topic);
    if (!topic) continue;
    if (const auto status = topic->kind == "status" ? parseStatus(letter.text) : std::nullopt)
      hearStatus(topic->till, *status);
    else if (const auto results = topic->kind == "results" ? parseResults(letter.text) : std::nullopt)
      hearResults(topic->till, *results);
    else
      say_(say("cadena: {} dice algo que no se entiende", "chain: {} says what is not understood",
               {topic->till}));
  }
  std::set<std::string> woken;
  {
    const std::lock_guard lock{mutex_};
    woken.swap(woken_);
  }
  for (const std::string& printer : woken) publishQueued(printer);
  publishAgain();
}

void Centre::acceptOlderBooks() {
  const std::lock_guard lock{mutex_};
  const bool isAsked =
      std::any_of(tills_.begin(), tills_.end(), [](const auto& till) { return till.second.isRestored; });
  if (!isAsked || !isOlderAccepted(books_)) return;
  books_.together([&] {
    books_.remember(noteAccepted, "");
    for (auto& [name, till] : tills_) {
      if (!till.isRestored) continue;
      till.accepted = till.status.told->revision;
      till.isRestored = false;
      remember(name, till);
    }
  });
  for (const auto& [name, till] : tills_)
    for (const std::string& printer : till.printers) woken_.insert(printerOf(name, printer));
}

void Centre::tellSeen(const std::string& name, const Till& till) {
  link_.publishKept(topicOf(name, "seen"), textOf(till.seen));
}

// A start never comes back: if one does, two tills take turns.
void Centre::noteStart(const std::string& name, Till& till, const std::string& lineage) {
  const std::string& last = till.status.now.lineage;
  if (last == lineage) return;
  if (till.lineages.contains(lineage)) {
    if (till.doubledUntil < Clock::now())
      say_(say("cadena: dos cajas se llaman {}: ¿se copió un disco, o un certificado?",
               "chain: two tills are called {}: was a disk copied, or a certificate?", {name}));
    till.doubledUntil = Clock::now() + doubled;
  }
  if (!last.empty()) till.lineages.insert(last);
}

void Centre::hearStatus(const std::string& name, const Status& status) {
  const std::lock_guard lock{mutex_};
  const bool isNew = !tills_.contains(name);
  if (isNew && !status.isOnline) return;
  Till& till = tills_[name];
  if (till.since == 0 || till.status.isOnline != status.isOnline) till.since = std::time(nullptr);
  till.status.isOnline = status.isOnline;
  if (!status.isOnline) return;
  noteStart(name, till, status.now.lineage);
  till.status = status;
  if (till.seen.lineage.empty()) till.seen = {status.now.lineage, 0};
  const std::size_t known = till.printers.size();
  for (const Json& printer : status.printers) till.printers.insert(printer.at("name").get<std::string>());
  if (isNew || till.printers.size() != known) {
    books_.together([&] {
      Json names = Json::array();
      for (const auto& [each, ignored] : tills_) names.push_back(each);
      books_.remember(noteTills, jsonLine(names));
      remember(name, till);
    });
    makeWorkers(name, till);
  }
  const bool isRestored =
      status.told && status.told->revision > till.accepted && wasRestored(till.seen, status.told);
  if (isRestored && !till.isRestored)
    say_(say(
        "cadena: books-older: {} sabe de más de lo que tienen estos libros; no se le envía nada. ¿Se restauró el "
        "disco de la central? \"zentaro serve accept-books\"",
        "chain: books-older: {} was told of more than these books hold; nothing is sent to it. Was the centre's "
        "disk restored? \"zentaro serve accept-books\"",
        {name}));
  till.isRestored = isRestored;
  tellSeen(name, till);
  for (auto& [id, published] : published_)
    if (published.till == name) published.due = {};
  for (const std::string& printer : till.printers) woken_.insert(printerOf(name, printer));
}

void Centre::hearResults(const std::string& name, const Results& results) {
  {
    const std::lock_guard lock{mutex_};
    const bool isNew = !tills_.contains(name);
    if (isNew) return;  // its status comes first, and the results again
    Till& till = tills_[name];
    const Seen before = till.seen;
    const Seen after = seenAfter(before, results);
    books_.together([&] {
      for (const Job& job : results.jobs) store(name, job);
      till.seen = after;
      if (!(after == before)) remember(name, till);
    });
    if (!results.upTo.lineage.empty()) tellSeen(name, till);
  }
  bell_.ring();
}

void Centre::store(const std::string& name, const Job& told) {
  std::optional<Job> known = books_.find(told.id);
  Job job = told;
  if (isOrdered(known, name, told)) {
    // At the till it may wait yet; here it was handed over.
    if (job.state == State::Queued) job.state = State::Printing;
    if (known->state == State::Queued && !isFinal(job.state)) return;
    if (const auto published = published_.find(told.id); published != published_.end())
      published->second.heard = Clock::now();
    if (!isNews(*known, job)) return;
    if (const auto published = published_.find(told.id); published != published_.end())
      published->second.job.state = job.state;
    static_cast<till::Order&>(job) = *known;
    job.accepted = known->accepted;
  } else {
    // Another till carries a later attempt of it.
    if (known && known->owner == serviceOwner && told.state == State::NotPrinted &&
        told.attempt < known->attempt)
      return;
    job.id = name + ":" + told.id;
    job.printer = printerOf(name, told.printer);
    job.owner = "till";
    known = books_.find(job.id);
    if (known && !isNews(*known, job)) return;
  }
  books_.learn(job);
  if (isFinal(job.state)) published_.erase(job.id);
}

std::string Centre::blockedBy(const std::string& name, const Till& till) const {
  if (till.isRestored) return "books-older";
  if (till.doubledUntil > Clock::now()) return "two-with-one-name";
  if (link_.isRefused(topicOf(name, "jobs"))) return "refused-by-broker";
  return till.status.blocked;
}

bool Centre::takesJobs(const std::string& name) const {
  const std::lock_guard lock{mutex_};
  const auto till = tills_.find(name);
  return session_ != 0 && till != tills_.end() && till->second.status.isOnline && !till->second.isRestored;
}

void Centre::publishQueued(const std::string& printer) {
  const std::string name = tillOf(printer);
  if (!takesJobs(name)) return;
  for (const Job& job : books_.queued(serviceOwner, printer)) {
    if (!books_.begin(job, {})) continue;
    Published& published = published_[job.id];
    published = {books_.find(job.id).value(), name, localName(name, printer), {}, {}};
    publish(published);
  }
}

void Centre::publish(Published& published) {
  const Job& job = published.job;
  const std::int64_t patience = remaining(job);
  constexpr std::int64_t leastExpiry = 30;
  published.due = Clock::now() + again;
  link_.publishFor(topicOf(published.till, "jobs"),
                   textOf(JobMessage{job.id, published.printer, job.attempt, patience, job.body}),
                   std::max(patience, leastExpiry));
}

void Centre::publishAgain() {
  for (auto& [id, published] : published_) {
    const Clock::time_point now = Clock::now();
    if (now < published.due) continue;
    const bool isSilent = remaining(published.job) == 0 && now - published.heard > again + silence;
    if (published.job.state == State::Printing && isSilent && published.due != Clock::time_point{}) {
      published.job.state = State::Unknown;
      books_.finish(
          published.job,
          {State::Unknown, "unknown", {}, {}, say("la caja no ha respondido", "the till has not answered")});
      bell_.ring();
    }
    if (takesJobs(published.till))
      publish(published);
    else
      published.due = now + silence;
  }
}

void Centre::wake(const std::string& printer) {
  {
    const std::lock_guard lock{mutex_};
    woken_.insert(printer);
  }
  bell_.ring();
}

PrinterReport Centre::report(const std::string& name, const std::string& printer) const {
  const std::lock_guard lock{mutex_};
  PrinterReport report;
  report.name = printerOf(name, printer);
  const auto till = tills_.find(name);
  if (till == tills_.end() || !till->second.status.isOnline) {
    report.cause = say("la caja no está en línea", "the till is offline");
    return report;
  }
  for (const Json& told : till->second.status.printers) {
    if (told.value("name", "") != printer) continue;
    for (const Condition condition : {Condition::Ready, Condition::Unreachable, Condition::Blocked})
      if (nameOf(condition) == told.value("state", "")) report.condition = condition;
    const auto text = [&](const char* member) {
      return told.contains(member) && told[member].is_string() ? told[member].get<std::string>() : "";
    };
    report.cause = text("cause");
    report.next = text("next");
    report.machine = text("machine");
    report.isVirtual = told.value("virtual", false);
  }
  if (const std::string blocked = blockedBy(name, till->second); !blocked.empty()) {
    report.condition = Condition::Blocked;
    report.cause = blocked;
  }
  return report;
}

Json Centre::standing() const {
  const std::lock_guard lock{mutex_};
  Json standing = link_.standing();
  standing["tills"] = tills_.size();
  standing["online"] = std::count_if(tills_.begin(), tills_.end(),
                                     [](const auto& till) { return till.second.status.isOnline; });
  return standing;
}

Json Centre::tills() const {
  const std::lock_guard lock{mutex_};
  Json list = Json::array();
  for (const auto& [name, till] : tills_) {
    list.push_back({{"name", name},
                    {"online", till.status.isOnline},
                    {"since", till::momentJson(till.since)},
                    {"version", till.status.version},
                    {"blocked", orNull(blockedBy(name, till))},
                    {"printers", till.status.printers}});
  }
  return list;
}

}  // namespace zentaro::service
