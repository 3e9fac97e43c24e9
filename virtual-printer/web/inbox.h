// Jobs that the web threads hand to the printer's loop, which alone touches the printer.
#pragma once

#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <string>

#include "virtual-printer/line/descriptor.h"

namespace printer {

class Inbox {
 public:
  using Job = std::function<std::string()>;

  /// Throws std::system_error when the system has no descriptor to give.
  Inbox();

  /// For the web threads: the result of the job, when the loop has done it; nothing when it is
  /// ending or busy for too long.
  std::optional<std::string> ask(Job job);

  /// For the loop: readable when there are jobs.
  int descriptor() const { return wake_.get(); }
  void work();
  /// Whoever waits gets nothing, and so does everybody after.
  void close();

 private:
  std::deque<std::packaged_task<std::string()>> takeAll();

  Descriptor wake_;
  std::mutex mutex_;
  std::deque<std::packaged_task<std::string()>> waiting_;
  bool isClosed_ = false;
};

}  // namespace printer
