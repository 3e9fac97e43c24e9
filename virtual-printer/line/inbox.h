// Jobs that other threads hand to the printer's loop, which alone touches the printer.
#pragma once

#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <string>

#include "virtual-printer/line/wake.h"

namespace virtual_printer {

class Inbox {
 public:
  using Job = std::function<std::string()>;

  /// For the other threads: the result of the job, when the loop has done it; nothing when it is
  /// ending or busy for too long.
  std::optional<std::string> ask(Job job);
  /// The same without waiting; false when the loop is ending.
  bool leave(std::packaged_task<std::string()> task);

  /// For the loop: rung when there are jobs.
  const Wake& wake() const { return wake_; }
  void work();
  /// Whoever waits gets nothing, and so does everybody after.
  void close();

 private:
  std::deque<std::packaged_task<std::string()>> takeAll();

  Wake wake_;
  std::mutex mutex_;
  std::deque<std::packaged_task<std::string()>> waiting_;
  bool isClosed_ = false;
};

}  // namespace virtual_printer
