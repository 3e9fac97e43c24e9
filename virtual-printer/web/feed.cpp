// Keeping and handing out of messages.
#include "virtual-printer/web/feed.h"

#include <algorithm>
#include <utility>

namespace virtual_printer {

void Feed::publish(const std::string& topic, int key, std::string json) {
  {
    const std::lock_guard lock{mutex_};
    const auto older = std::find_if(kept_.rbegin(), kept_.rend(), [&](const Message& message) {
      return message.topic == topic && message.key == key;
    });
    if (older != kept_.rend()) {
      if (older->json == json) return;
      kept_.erase(std::next(older).base());
    }
    kept_.push_back({++last_, topic, key, std::move(json)});
    dropOldest(topic);
  }
  changed_.notify_all();
}

void Feed::dropOldest(const std::string& topic) {
  std::size_t keys = 0, bytes = 0;
  for (const Message& message : kept_) {
    if (message.topic != topic) continue;
    ++keys;
    bytes += message.json.size();
  }
  for (auto at = kept_.begin(); keys > 1 && (keys > keptKeys || bytes > keptBytes);) {
    if (at->topic != topic) {
      ++at;
      continue;
    }
    --keys;
    bytes -= at->json.size();
    at = kept_.erase(at);
  }
}

std::vector<Feed::Message> Feed::after(std::uint64_t number, std::chrono::milliseconds patience) {
  std::unique_lock lock{mutex_};
  changed_.wait_for(lock, patience, [&] { return isClosed_ || last_ > number; });
  const auto first =
      std::upper_bound(kept_.begin(), kept_.end(), number,
                       [](std::uint64_t wanted, const Message& message) { return wanted < message.number; });
  return {first, kept_.end()};
}

void Feed::close() {
  {
    const std::lock_guard lock{mutex_};
    isClosed_ = true;
  }
  changed_.notify_all();
}

bool Feed::isClosed() const {
  const std::lock_guard lock{mutex_};
  return isClosed_;
}

}  // namespace virtual_printer
