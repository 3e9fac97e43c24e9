// Jobs by their changes, and the stream of them: one number says how far a client has come, across restarts too.
#include <algorithm>
#include <charconv>

#include "base/terminal/language.h"
#include "service/http/call.h"
#include "service/http/job_json.h"

namespace zentaro::service {

using terminal::say;
using till::Job;

namespace {

constexpr int mostJobs = 100;
constexpr std::chrono::seconds heartbeat{10};

std::int64_t revisionFrom(const std::string& text, std::int64_t fallback) {
  std::int64_t value = fallback;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc{} && end == text.data() + text.size() && value >= 0 ? value : fallback;
}

// Which jobs a request is about: those that it names, as far as its token sees them.
till::Books::Filter filterOf(const http::Request& request, const Token& token) {
  till::Books::Filter filter;
  filter.printer = token.only.empty() ? request.get_param_value("printer") : token.only;
  const std::string state = request.get_param_value("state");
  if (state.empty()) return filter;
  for (const till::State known : {till::State::Queued, till::State::Printing, till::State::Printed,
                                  till::State::NotPrinted, till::State::Unknown})
    if (till::nameOf(known) == state) filter.state = known;
  if (!filter.state)
    throw Problem{400, "bad-request", say("\"{}\" no es un estado", "\"{}\" is no state", {state})};
  return filter;
}

// A customer's RIF stands in the body only.
bool speaksOf(const Job& job, const std::string& text) {
  return job.id.find(text) != std::string::npos || job.body.find(text) != std::string::npos ||
         (job.number && std::to_string(*job.number).find(text) != std::string::npos);
}

}  // namespace

Json Api::listOf(const std::vector<Job>& jobs) const {
  Json list = Json::array();
  for (const Job& job : jobs) list.push_back(jobJson(job, isVirtual(job.printer)));
  return list;
}

// The latest ones, newest first: what a page shows and searches.
void Api::getLatest(Call& call) {
  constexpr int mostSearched = 5'000;
  const std::size_t most = static_cast<std::size_t>(call.number("latest", 1, 1'000, mostJobs));
  const std::string text = call.request.get_param_value("search");
  const till::Books::Filter filter = filterOf(call.request, call.token);
  const BooksPool::Loan books = parts_.books.borrow();
  const std::int64_t revision = books->revision();
  std::vector<Job> jobs = books->latest(text.empty() ? static_cast<int>(most) : mostSearched);
  std::erase_if(jobs, [&](const Job& job) {
    return job.id.empty() || (!filter.printer.empty() && job.printer != filter.printer) ||
           (filter.state && job.state != *filter.state) || (!text.empty() && !speaksOf(job, text));
  });
  std::reverse(jobs.begin(), jobs.end());
  if (jobs.size() > most) jobs.resize(most);
  service::answer(call.response, 200, {{"revision", revision}, {"jobs", listOf(jobs)}});
}

void Api::getJobs(Call& call) {
  if (call.request.has_param("latest") || call.request.has_param("search")) return getLatest(call);
  const till::Books::Filter filter = filterOf(call.request, call.token);
  const std::int64_t after = revisionFrom(call.request.get_param_value("after"), 0);
  const int seconds = call.number("wait", 0, 60, 0);
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds{seconds};
  const Waiter waiter{waiters_};
  for (;;) {
    const std::uint64_t seen = parts_.bell.rung();
    const auto [jobs, revision] = changes(filter, after);
    const bool goesOn = jobs.empty() && seconds > 0 && waiter.isFree() && parts_.bell.wait(seen, until);
    if (!goesOn) return service::answer(call.response, 200, {{"revision", revision}, {"jobs", listOf(jobs)}});
  }
}

// The revision to go on from stands before the jobs are read: what changes in between is told twice, never missed.
std::pair<std::vector<Job>, std::int64_t> Api::changes(const till::Books::Filter& filter,
                                                       std::int64_t after) {
  const BooksPool::Loan books = parts_.books.borrow();
  std::int64_t revision = books->revision();
  std::vector<Job> jobs = books->changedAfter(after, filter, mostJobs);
  if (jobs.size() == mostJobs) revision = jobs.back().revision;
  std::erase_if(jobs, [](const Job& job) { return job.id.empty(); });  // sold at the counter, without a name
  return {std::move(jobs), std::max(revision, after)};
}

void Api::getEvents(Call& call) {
  const std::string last = call.request.get_header_value("Last-Event-ID");
  const std::int64_t now = parts_.books.borrow()->revision();
  Listener listener{filterOf(call.request, call.token), call.token,
                    call.request.get_header_value("Authorization"),
                    revisionFrom(last.empty() ? call.request.get_param_value("after") : last, now)};
  call.server.stream(call.request, call.response,
                     [this, listener = std::move(listener)]() mutable { return news(listener); });
}

std::optional<std::string> Api::news(Listener& listener) {
  if (!parts_.tokens.find(listener.authorization)) return std::nullopt;  // it was taken away
  const std::uint64_t seen = parts_.bell.rung();
  std::string text = printerEvents(listener.token, listener.printers);
  const auto [jobs, revision] = changes(listener.filter, listener.after);
  for (const Job& job : jobs)
    text += "event: job\nid: " + std::to_string(job.revision) +
            "\ndata: " + jsonLine(jobJson(job, isVirtual(job.printer))) + "\n\n";
  listener.after = revision;
  if (!text.empty()) return text;
  const bool isRung = parts_.bell.wait(seen, std::chrono::steady_clock::now() + heartbeat);
  if (parts_.bell.isClosed()) return std::nullopt;
  return isRung ? std::string{} : std::string{":\n\n"};
}

// How the printers are, as far as it is news; without an id, since it is not resumed.
std::string Api::printerEvents(const Token& token, std::map<std::string, std::string>& told) {
  std::string text;
  for (const std::string& name : parts_.workers.names()) {
    if (!token.sees(name)) continue;
    Json json = printer(name);
    std::string line = jsonLine(json);
    json.erase("heard");  // grows by itself
    json.erase("oldest");
    std::string news = jsonLine(json);
    if (told[name] == news) continue;
    text += "event: printer\ndata: " + line + "\n\n";
    told[name] = std::move(news);
  }
  return text;
}

}  // namespace zentaro::service
