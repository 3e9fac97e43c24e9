// The till's end of the chain: it takes the centre's jobs into its own books, and sends what changes there until the
// centre's disk has it. The books are the outbox.
#pragma once

#include <atomic>
#include <chrono>
#include <optional>
#include <string>

#include "service/chain/mqtt_link.h"
#include "service/chain/rules.h"
#include "service/chain/turns.h"
#include "service/http/bell.h"
#include "service/workers/workers.h"
#include "till/books/books.h"

namespace zentaro::service {

class TillSide {
 public:
  struct Settings {
    Broker broker;
    std::string till, books;
  };
  TillSide(const Settings& settings, Workers& workers, Bell& bell,
           std::function<void(const std::string&)> say);
  TillSide(const TillSide&) = delete;
  TillSide& operator=(const TillSide&) = delete;
  ~TillSide();

  /// How the chain is, for what watches over it.
  Json standing() const;

 private:
  using Clock = std::chrono::steady_clock;

  void turn();
  void beginSession(int session);
  void beginLineage();
  void hear(const Seen& seen);
  void acceptOlderBooks();
  void take(const JobMessage& message);
  void refuse(const JobMessage& message, const till::Order& order, const std::string& why);
  void answer(till::Job job);
  void sendChanges();
  void tellStatus();

  Seen now() const { return {lineages_.back().name, books_.revision()}; }
  std::int64_t base() const { return seen_ && !isFromStart_ ? seen_->revision : 0; }

  Settings settings_;
  Workers& workers_;
  Bell& bell_;
  std::function<void(const std::string&)> say_;
  till::Books books_;
  std::vector<Lineage> lineages_;
  std::optional<Seen> seen_, told_;  // what the centre said last, and the most that it ever said
  bool isHeard_ = false;             // in this session
  bool areOlder_ = false;            // no job is taken until a person has said so
  bool isFromStart_ = false;         // a person has: everything is sent again
  int session_ = 0;
  std::int64_t sent_ = 0;
  std::atomic<std::int64_t> behind_{0};  // changes that the centre has not seen
  Clock::time_point sendAgain_{}, statusDue_{};
  std::string status_;
  MqttLink link_;
  std::optional<Turns> turns_;
};

}  // namespace zentaro::service
