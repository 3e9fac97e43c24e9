// The order of beginning.
#include "service/jobs/queue.h"

#include <algorithm>

namespace zentaro::service {

bool isExpired(const till::Job& job, const system::Uptime& now) {
  return job.boot != now.boot || now.seconds < job.uptime || now.seconds - job.uptime >= job.patience.count();
}

std::optional<std::size_t> pick(std::span<const Waiting> queue) {
  const auto indexOf = [&](auto place) { return static_cast<std::size_t>(place - queue.begin()); };
  const auto first =
      std::find_if(queue.begin(), queue.end(), [](const Waiting& waiting) { return !waiting.isHeld; });
  if (first == queue.end()) return std::nullopt;
  if (!first->wasRefused) return indexOf(first);
  const auto closing = std::find_if(first + 1, queue.end(), [](const Waiting& waiting) {
    return waiting.isClosing && !waiting.isHeld && waiting.isDue;
  });
  if (closing != queue.end()) return indexOf(closing);
  return first->isDue ? std::optional(indexOf(first)) : std::nullopt;
}

}  // namespace zentaro::service
