// The queue between the printer and the thread that writes.
#include "virtual-printer/shell/outlet.h"

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include "base/files/descriptor.h"

namespace virtual_printer {
namespace {

constexpr std::chrono::milliseconds writePatience{250};
constexpr std::size_t mostKept = 1'000'000;  // bytes

}  // namespace

struct Outlet::Channel {
  int descriptor = -1;
  std::mutex mutex;
  std::condition_variable changed;
  std::deque<std::string> waiting;  // the first one is being written
  std::size_t kept = 0;             // bytes in them
  int error = 0;                    // of the last one written
  bool isStuck = false;             // the reader was waited for in vain
  bool isEnding = false;

  void run() {
    std::unique_lock lock{mutex};
    for (;;) {
      changed.wait(lock, [&] { return isEnding || !waiting.empty(); });
      if (waiting.empty()) return;
      const std::string& text = waiting.front();
      lock.unlock();
      const int result = zentaro::files::writeAll(descriptor, text);
      lock.lock();
      error = result;
      kept -= text.size();
      waiting.pop_front();
      isStuck = isStuck && !waiting.empty();
      changed.notify_all();
    }
  }
};

Outlet::Outlet(int descriptor) : channel_{std::make_shared<Channel>()} {
  channel_->descriptor = descriptor;
  std::thread{[channel = channel_] { channel->run(); }}.detach();
}

Outlet::~Outlet() {
  std::unique_lock lock{channel_->mutex};
  channel_->isEnding = true;
  channel_->changed.notify_all();
  channel_->changed.wait_for(lock, writePatience, [&] { return channel_->waiting.empty(); });
}

Outlet::Fate Outlet::write(std::string text) {
  std::unique_lock lock{channel_->mutex};
  if (channel_->kept + text.size() > mostKept) return Fate::Waiting;
  channel_->kept += text.size();
  channel_->waiting.push_back(std::move(text));
  channel_->changed.notify_all();
  const auto isTaken = [&] { return channel_->waiting.empty(); };
  if (!channel_->isStuck) channel_->isStuck = !channel_->changed.wait_for(lock, writePatience, isTaken);
  if (!isTaken()) return Fate::Waiting;
  errno = channel_->error;
  return channel_->error == 0 ? Fate::Written : Fate::Failed;
}

}  // namespace virtual_printer
