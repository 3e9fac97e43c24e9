// The way of a job: queue, wake-up, result.
#include "virtual-printer/web/inbox.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <system_error>
#include <utility>

namespace printer {
namespace {

constexpr std::chrono::seconds patience{5};

}  // namespace

Inbox::Inbox() : wake_{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)} {
  if (!wake_.isOpen()) throw std::system_error(errno, std::generic_category(), "--web: eventfd");
}

std::optional<std::string> Inbox::ask(Job job) {
  std::packaged_task<std::string()> task{std::move(job)};
  std::future<std::string> result = task.get_future();
  {
    const std::lock_guard lock{mutex_};
    if (isClosed_) return std::nullopt;
    waiting_.push_back(std::move(task));
  }
  const std::uint64_t one = 1;
  if (::write(wake_.get(), &one, sizeof one) < 0) return std::nullopt;
  if (result.wait_for(patience) != std::future_status::ready) return std::nullopt;
  try {
    return result.get();
  } catch (const std::future_error&) {  // dropped by close()
    return std::nullopt;
  }
}

void Inbox::work() {
  std::uint64_t count = 0;
  if (::read(wake_.get(), &count, sizeof count) < 0) return;
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

}  // namespace printer
