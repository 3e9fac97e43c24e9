// A thread for each connection, up to a limit. At the limit the door stays shut until one is free.
#pragma once

#include <httplib.h>

#include <condition_variable>
#include <mutex>

namespace zentaro::http {

class Threads final : public httplib::TaskQueue {
 public:
  explicit Threads(std::size_t limit) : limit_{limit} {}

  /// Waits at the limit.
  void enqueue(std::function<void()> task) override;
  /// Waits for all of them.
  void shutdown() override;

 private:
  void done();

  const std::size_t limit_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::size_t busy_ = 0;
};

}  // namespace zentaro::http
