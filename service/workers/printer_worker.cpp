// The thread's side for others, and its wake-ups.
#include "service/workers/printer_worker.h"

#include "service/workers/worker_loop.h"

namespace zentaro::service {

using namespace std::chrono_literals;

std::string_view nameOf(Condition condition) {
  switch (condition) {
    case Condition::Ready: return "ready";
    case Condition::Busy: return "busy";
    case Condition::Unreachable: return "unreachable";
    case Condition::Blocked: break;
  }
  return "blocked";
}

PrinterWorker::PrinterWorker(Settings settings) : settings_{std::move(settings)} {
  report_.name = settings_.name;
  report_.device = settings_.device;
  report_.isVirtual = settings_.isVirtual;
  thread_ = std::thread{[this] { Loop{*this}.run(); }};
}

PrinterWorker::~PrinterWorker() {
  end();
  join();
}

void PrinterWorker::wake() {
  {
    const std::lock_guard lock{mutex_};
    isWoken_ = true;
  }
  woken_.notify_all();
}

void PrinterWorker::end() {
  isEnding_ = true;
  wake();
}

void PrinterWorker::join() {
  if (thread_.joinable()) thread_.join();
  const std::lock_guard lock{mutex_};
  asked_.clear();  // whoever waits is told that nothing came
}

PrinterReport PrinterWorker::report() const {
  const std::lock_guard lock{mutex_};
  return report_;
}

std::optional<Json> PrinterWorker::ask(Question question, std::chrono::seconds patience) {
  std::future<std::optional<Json>> answer;
  {
    const std::lock_guard lock{mutex_};
    if (isEnding_) return std::nullopt;
    asked_.push_back({question, {}});
    answer = asked_.back().answer.get_future();
    isWoken_ = true;
  }
  woken_.notify_all();
  if (answer.wait_for(patience) != std::future_status::ready) return std::nullopt;
  try {
    return answer.get();
  } catch (const std::future_error&) {  // the thread has ended
    return std::nullopt;
  }
}

bool PrinterWorker::hasOpenDocument() {
  ask(Question::Status, 3s);
  return report().document != 0;
}

bool PrinterWorker::waitUntil(std::chrono::steady_clock::time_point until) {
  std::unique_lock lock{mutex_};
  const bool isWoken = woken_.wait_until(lock, until, [this] { return isWoken_ || isEnding_; });
  isWoken_ = false;
  return isWoken;
}

void PrinterWorker::change(const std::function<void(PrinterReport&)>& edit) {
  {
    const std::lock_guard lock{mutex_};
    edit(report_);
  }
  settings_.changed();
}

std::deque<PrinterWorker::Asked> PrinterWorker::takeAsked() {
  const std::lock_guard lock{mutex_};
  return std::exchange(asked_, {});
}

}  // namespace zentaro::service
