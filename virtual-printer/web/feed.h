// What the page knows, as messages by topic and key. The printer's loop publishes, the web threads read; a
// newer message takes the place of the one with the same topic and key, so that a page that comes late, or
// comes back, gets what still holds and nothing twice.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

namespace virtual_printer {

class Feed {
 public:
  struct Message {
    std::uint64_t number = 0;  // grows from message to message
    std::string topic;
    int key = 0;
    std::string json;
  };

  // The oldest keys of a topic are dropped when there are more, or when they take more bytes.
  static constexpr std::size_t keptKeys = 1000;
  static constexpr std::size_t keptBytes = 8'000'000;

  /// Does nothing when the last message with this topic and key says the same.
  void publish(const std::string& topic, int key, std::string json);
  /// What was published after the message with this number, as far as it still holds. Waits until there is
  /// something, but not longer than told.
  std::vector<Message> after(std::uint64_t number, std::chrono::milliseconds patience);
  /// Ends all waiting for good.
  void close();
  bool isClosed() const;

 private:
  void dropOldest(const std::string& topic);

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Message> kept_;  // in the order of their numbers
  std::uint64_t last_ = 0;
  bool isClosed_ = false;
};

}  // namespace virtual_printer
