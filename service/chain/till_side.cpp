// The turns of the till's thread.
#include "service/chain/till_side.h"

#include <algorithm>
#include <utility>

#include "base/system/random.h"
#include "base/terminal/language.h"
#include "service/chain/books_notes.h"
#include "service/http/job_json.h"
#include "service/jobs/queue.h"
#include "service/workers/words.h"

namespace zentaro::service {

using namespace std::chrono_literals;
using terminal::say;
using till::Job;
using till::State;

namespace {

constexpr auto resend = 60s;

}  // namespace

TillSide::TillSide(const Settings& settings, Workers& workers, Bell& bell,
                   std::function<void(const std::string&)> tell)
    : settings_{settings},
      workers_{workers},
      bell_{bell},
      say_{std::move(tell)},
      books_{settings.books},
      link_{{settings.broker,
             settings.till,
             {topicOf(settings.till, "jobs"), topicOf(settings.till, "seen")},
             Letter{topicOf(settings.till, "status"), textOf(Status{})},
             [this] { bell_.ring(); },
             say_,
             settings.broker.spread}} {
  beginLineage();
  turns_.emplace(bell_, say_, [this] { turn(); });
}

TillSide::~TillSide() {
  turns_.reset();
  link_.publishKept(topicOf(settings_.till, "status"), textOf(Status{}));
}

Json TillSide::standing() const {
  Json standing = link_.standing();
  standing["behind"] = behind_.load();
  return standing;
}

void TillSide::beginLineage() {
  lineages_ = lineagesFrom(books_.remembered(noteLineages));
  lineages_.push_back({system::randomHex(8), books_.revision() + 1});
  books_.remember(noteLineages, textOf(lineages_));
  told_ = parseSeen(books_.remembered(noteTold));
  seen_ = told_;
}

void TillSide::turn() {
  if (const int session = link_.session(); session != session_) beginSession(session);
  if (areOlder_ && isOlderAccepted(books_)) acceptOlderBooks();
  for (const Letter& letter : link_.take()) {
    const std::optional<Topic> topic = parseTopic(letter.topic);
    if (!topic || topic->till != settings_.till) continue;
    if (topic->kind == "seen") {
      if (const std::optional<Seen> seen = parseSeen(letter.text)) hear(*seen);
    } else if (const std::optional<JobMessage> message = parseJobMessage(letter.text)) {
      take(*message);
    } else {
      say_(say("cadena: un mensaje que no es un trabajo", "chain: a message that is no job"));
    }
  }
  behind_ = std::max<std::int64_t>(0, books_.revision() - base());
  if (session_ == 0) return;
  sendChanges();
  tellStatus();
}

void TillSide::beginSession(int session) {
  session_ = session;
  isHeard_ = false;
  status_.clear();
  sent_ = base();
}

void TillSide::hear(const Seen& seen) {
  if (isFromStart_ && seen.lineage == lineages_.back().name) isFromStart_ = false;
  const bool wereOlder =
      std::exchange(areOlder_, !isFromStart_ && areOlder(lineages_, books_.revision(), seen));
  isHeard_ = true;
  if (seen_ && seen.revision <= seen_->revision) sent_ = seen.revision;  // the centre lacks what followed
  if (seen_ && seen.revision > seen_->revision) sendAgain_ = Clock::now() + resend;
  seen_ = seen;
  if (areOlder_ && !wereOlder)
    say_(say(
        "cadena: books-older: la central vio más de lo que tienen estos libros; no se toman trabajos. "
        "¿Se cambió o restauró el disco? \"zentaro serve accept-books\"",
        "chain: books-older: the centre has seen more than these books hold; no jobs are taken. Was the disk "
        "replaced or restored? \"zentaro serve accept-books\"",
        {}));
  if (areOlder_ || isFromStart_) return;
  sent_ = std::max(sent_, seen.revision);
  if (told_ && told_->revision >= seen.revision) return;
  told_ = seen;
  books_.remember(noteTold, textOf(seen));
}

void TillSide::acceptOlderBooks() {
  books_.together([&] {
    books_.remember(noteAccepted, "");
    books_.remember(noteTold, "");
  });
  areOlder_ = false;
  isFromStart_ = true;
  told_.reset();
  sent_ = 0;
  sendAgain_ = {};
}

void TillSide::take(const JobMessage& message) {
  const std::optional<Job> known = books_.find(message.id);
  RequestReading reading = readJobRequest(message.body);
  reading.request.printer = message.printer;
  reading.request.patience = std::chrono::seconds{message.patience};
  Worker* worker = workers_.find(message.printer);
  const bool isInOrder =
      reading.noJson.empty() && reading.problems.empty() && worker != nullptr && worker->till().empty();
  const Reply reply = replyTo(message, reading.request.digest, isInOrder, known);
  if (reply == Reply::Result) return answer(*known);
  if (!isHeard_ || areOlder_) return;
  const till::Order order = orderOf(message.id, message.body, reading.request);
  if (reply == Reply::Foreign) {
    Job other;
    static_cast<till::Order&>(other) = order;
    other.attempt = message.attempt;
    other.state = State::NotPrinted;
    other.verdict = "other-content";
    other.cause =
        say("este id es aquí de otro trabajo; no se imprimió", "this id is another job's here; not printed");
    return answer(std::move(other));
  }
  if (reply == Reply::Refuse)
    return refuse(message, order,
                  isInOrder                 ? expiredText()
                  : worker == nullptr       ? say("no hay esa impresora", "there is no such printer")
                  : !reading.noJson.empty() ? reading.noJson
                                            : reading.problems.front().text);
  if (books_.queued(serviceOwner, message.printer).size() >= longestQueue) return;  // it comes again
  books_.put(order, message.attempt);
  worker->wake();
  bell_.ring();
}

// Required: into the books, so that a copy of the message that comes later with more patience finds its end there.
void TillSide::refuse(const JobMessage& message, const till::Order& order, const std::string& why) {
  books_.together([&] {
    if (!books_.put(order, message.attempt)) return;
    books_.withdraw(message.id, message.patience == 0 ? "expired" : "not-in-order", why);
  });
  bell_.ring();
}

void TillSide::answer(Job job) {
  if (job.id.empty()) return;
  link_.publish(topicOf(settings_.till, "results"), textOf(Results{0, {}, false, {std::move(job)}}));
}

void TillSide::sendChanges() {
  constexpr int most = 50;
  if (areOlder_) return;
  sent_ = std::max(sent_, base());
  if (sent_ > base() && Clock::now() >= sendAgain_)
    sent_ = base();  // what the centre did not see is sent again
  for (bool isMore = true; isMore;) {
    Results results{
        sent_, {lineages_.back().name, sent_}, isFromStart_, books_.changedAfter(sent_, {}, most)};
    isMore = results.jobs.size() == most;
    if (results.jobs.empty() && !(isFromStart_ && Clock::now() >= sendAgain_)) return;
    if (!results.jobs.empty()) results.upTo.revision = results.jobs.back().revision;
    std::erase_if(results.jobs, [](const Job& job) { return job.id.empty(); });  // sold without a name
    link_.publish(topicOf(settings_.till, "results"), textOf(results));
    if (sent_ == base()) sendAgain_ = Clock::now() + resend;
    sent_ = results.upTo.revision;
  }
}

// What grows by itself or passes with each document is no news.
void TillSide::tellStatus() {
  if (Clock::now() < statusDue_ && !status_.empty()) return;
  Status status{true,  ZENTARO_VERSION, areOlder_ ? "books-older" : "", {lineages_.back().name, 0},
                told_, Json::array()};
  for (const std::string& name : workers_.names()) {
    Json printer = printerJson(workers_.find(name)->report(), books_);
    for (const char* passing : {"heard", "oldest", "running", "device"}) printer.erase(passing);
    if (printer["state"] == "busy") printer["state"] = "ready";
    status.printers.push_back(std::move(printer));
  }
  Status compared = status;
  compared.told.reset();
  std::string text = textOf(compared);
  if (text == status_) return;
  status.now = now();
  link_.publishKept(topicOf(settings_.till, "status"), textOf(status));
  status_ = std::move(text);
  statusDue_ = Clock::now() + 2s;
}

}  // namespace zentaro::service
