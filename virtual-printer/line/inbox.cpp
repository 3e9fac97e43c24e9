// The way of a job: queue, wake-up, result.
#include "virtual-printer/line/inbox.h"

#include <chrono>
#include <utility>

namespace virtual_printer {
namespace {

constexpr std::chrono::seconds longestWait{5};

}  // namespace

std::optional<std::string> Inbox::ask(Job job) {
  std::packaged_task<std::string()> task{std::move(job)};
  std::future<std::string> result = task.get_future();
  if (!leave(std::move(task))) return std::nullopt;
  if (result.wait_for(longestWait) != std::future_status::ready) return std::nullopt;
  try {
    return result.get();
  } catch (const std::future_error&) {  // dropped by close()
    return std::nullopt;
  }
}

bool Inbox::leave(std::packaged_task<std::string()> task) {
  {
    const std::lock_guard lock{mutex_};
    if (isClosed_) return false;
    waiting_.push_back(std::move(task));
  }
  wake_.ring();
  return true;
}

void Inbox::work() {
  wake_.quiet();
  for (auto& task : takeAll()) task();
}

void Inbox::close() {
  {
    const std::lock_guard lock{mutex_};
    isClosed_ = true;
  }
  takeAll();
}

std::deque<std::packaged_task<std::string()>> Inbox::takeAll() {
  const std::lock_guard lock{mutex_};
  return std::exchange(waiting_, {});
}

}  // namespace virtual_printer
