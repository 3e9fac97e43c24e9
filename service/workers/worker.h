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
#include "service/workers/printer_report.h"

namespace zentaro::service {

/// Under this name the service's jobs stand in the books: nobody else begins them.
inline constexpr const char* serviceOwner = "serve";

/// What a client may ask between two jobs.
enum class Question { Status, Day };

class Worker {
 public:
  struct Settings {
    std::string name, device;
    bool isVirtual = false;
    std::string books;              // the path of the books
    std::function<void()> changed;  // called when a job or the printer has changed
    /// The other printer that has this serial number, else its own name. An empty one gives its own up.
    std::function<std::string(const std::string& machine)> holderOf = {};
  };

  explicit Worker(Settings settings);
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  ~Worker();

  const std::string& name() const { return settings_.name; }

  /// A job was put into its queue, or settled by a person.
  void wake();
  /// What it prints is ended first, and nothing more is begun.
  void end();
  void join();

  PrinterReport report() const;
  /// Nothing when the printer did not answer, or was busy for so long.
  std::optional<Json> ask(Question question, std::chrono::seconds patience);
  /// Whether the printer says that a document is open on it.
  bool hasOpenDocument();

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
