// A printer's own thread: it alone holds the port, begins the queued jobs one by one, and finds out what came of
// those that were cut short.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "base/files/json.h"
#include "service/workers/worker.h"

namespace zentaro::service {

class PrinterWorker final : public Worker {
 public:
  struct Settings {
    std::string name, device;
    bool isVirtual = false;
    std::string books;              // the path of the books
    std::function<void()> changed;  // called when a job or the printer has changed
    /// The other printer that has this serial number, else its own name. An empty one gives its own up.
    std::function<std::string(const std::string& machine)> holderOf = {};
  };

  explicit PrinterWorker(Settings settings);
  PrinterWorker(const PrinterWorker&) = delete;
  PrinterWorker& operator=(const PrinterWorker&) = delete;
  ~PrinterWorker() override;

  const std::string& name() const override { return settings_.name; }

  void wake() override;
  void end() override;
  void join() override;
  PrinterReport report() const override;
  std::optional<Json> ask(Question question, std::chrono::seconds patience) override;
  bool hasOpenDocument() override;

 private:
  class Loop;
  struct Asked {
    Question question;
    std::promise<std::optional<Json>> answer;
  };

  // For the thread.
  bool waitUntil(std::chrono::steady_clock::time_point until);
  void change(const std::function<void(PrinterReport&)>& edit);
  std::deque<Asked> takeAsked();

  Settings settings_;
  mutable std::mutex mutex_;
  std::condition_variable woken_;
  bool isWoken_ = false;
  std::atomic<bool> isEnding_{false};
  std::deque<Asked> asked_;
  PrinterReport report_;
  std::thread thread_;
};

}  // namespace zentaro::service
