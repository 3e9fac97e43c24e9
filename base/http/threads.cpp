// Threads on demand.
#include "base/http/threads.h"

#include <system_error>
#include <thread>

namespace zentaro::http {

void Threads::enqueue(std::function<void()> task) {
  {
    std::unique_lock lock{mutex_};
    changed_.wait(lock, [&] { return busy_ < limit_; });
    ++busy_;
  }
  try {
    std::thread{[this, task] {
      task();
      done();
    }}.detach();
  } catch (const std::system_error&) {  // the system gives no thread: the door waits for this one request
    task();
    done();
  }
}

void Threads::done() {
  // Told under the lock: whoever waits for the last one destroys this object.
  const std::lock_guard lock{mutex_};
  --busy_;
  changed_.notify_all();
}

void Threads::shutdown() {
  std::unique_lock lock{mutex_};
  changed_.wait(lock, [&] { return busy_ == 0; });
}

}  // namespace zentaro::http
