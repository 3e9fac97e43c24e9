// Wakes everybody who waits for a change of the books.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace zentaro::service {

class Bell {
 public:
  using Time = std::chrono::steady_clock::time_point;

  void ring() {
    {
      const std::lock_guard lock{mutex_};
      ++rung_;
    }
    changed_.notify_all();
  }
  /// Nobody waits from now on.
  void close() {
    {
      const std::lock_guard lock{mutex_};
      isClosed_ = true;
    }
    changed_.notify_all();
  }

  /// How often it has rung: taken before the books are read, so that no change in between is missed.
  std::uint64_t rung() const {
    const std::lock_guard lock{mutex_};
    return rung_;
  }
  /// False when it did not ring behind `seen` until then, or is closed.
  bool wait(std::uint64_t seen, Time until) {
    std::unique_lock lock{mutex_};
    return changed_.wait_until(lock, until, [&] { return isClosed_ || rung_ != seen; }) && !isClosed_;
  }
  bool isClosed() const {
    const std::lock_guard lock{mutex_};
    return isClosed_;
  }

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::uint64_t rung_ = 0;
  bool isClosed_ = false;
};

}  // namespace zentaro::service
