// The thread that follows the books.
#include "service/http/chronicle.h"

#include "service/jobs/put.h"
#include "service/workers/worker.h"

namespace zentaro::service {

using till::Job;
using till::State;

namespace {

constexpr std::chrono::seconds lookEvery{1};

// "caja1 F-000123 printed 00000005 in 4 s". Required: no customer and no amount.
std::string lineOf(const Job& job) {
  std::string line =
      job.printer + " " + job.id + " " +
      (isFinal(job.state) && !job.verdict.empty() ? job.verdict : std::string(till::nameOf(job.state)));
  if (job.number) {
    const std::string digits = std::to_string(*job.number);
    line += " " + std::string(digits.size() < 8 ? 8 - digits.size() : 0, '0') + digits;
  }
  if (isFinal(job.state) && job.begun != 0) line += " in " + std::to_string(job.ended - job.begun) + " s";
  if (!job.cause.empty()) line += " (" + job.cause + ")";
  return line;
}

}  // namespace

Chronicle::Chronicle(BooksPool& books, Bell& bell, Say say)
    : books_{books}, bell_{bell}, say_{std::move(say)}, own_{std::make_unique<till::Books>(books.path())} {
  revision_ = own_->revision();
  dataVersion_ = own_->dataVersion();
  for (const Job& job : own_->changedAfter(0, {{}, State::Unknown}, 1'000)) unknown_.insert(job.id);
  thread_ = std::thread{[this] { follow(); }};
}

void Chronicle::follow() {
  while (!bell_.isClosed()) {
    const std::uint64_t seen = bell_.rung();
    try {
      readOn();
    } catch (const till::BooksError&) {  // told to whoever asks; here is nobody to tell
    }
    if (bell_.wait(seen, std::chrono::steady_clock::now() + lookEvery)) continue;
    try {
      const std::int64_t version = own_->dataVersion();
      if (version != dataVersion_ && !bell_.isClosed()) bell_.ring();
      dataVersion_ = version;
    } catch (const till::BooksError&) {
    }
  }
}

void Chronicle::readOn() {
  constexpr int most = 100;
  for (std::size_t read = most; read == most;) {
    const std::vector<Job> jobs = own_->changedAfter(revision_, {}, most);
    for (const Job& job : jobs) note(job);
    if (!jobs.empty()) revision_ = jobs.back().revision;
    read = jobs.size();
  }
}

void Chronicle::note(const Job& job) {
  say_(lineOf(job));
  const std::lock_guard lock{mutex_};
  if (job.state == State::Unknown) unknown_.insert(job.id);
  if (!isFinal(job.state)) return;
  counts_.recoveries += static_cast<std::int64_t>(unknown_.erase(job.id));
  noteZ(job);
  ++counts_.jobs[{job.printer, std::string(till::nameOf(job.kind)), job.verdict}];
  if (job.begun == 0) return;
  counts_.seconds[job.printer] += job.ended - job.begun;
  ++counts_.ended[job.printer];
}

void Chronicle::noteZ(const Job& job) {
  if (job.kind == till::Kind::Z && job.state == State::Printed) counts_.lastZ[job.printer] = job.ended;
}

void Chronicle::answered(int code) {
  const std::lock_guard lock{mutex_};
  ++counts_.requests[code];
}

Counts Chronicle::counts() const {
  const std::lock_guard lock{mutex_};
  return counts_;
}

}  // namespace zentaro::service
