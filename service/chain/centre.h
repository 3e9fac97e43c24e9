// The centre's end of the chain: it publishes the jobs of its own books to the tills until a result names them, and
// keeps what the tills tell. Only a till says that something was not printed.
#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>

#include "service/chain/mqtt_link.h"
#include "service/chain/rules.h"
#include "service/chain/turns.h"
#include "service/http/bell.h"
#include "service/workers/workers.h"
#include "till/books/books.h"

namespace zentaro::service {

class Centre {
 public:
  struct Settings {
    Broker broker;
    std::string books;
  };
  Centre(const Settings& settings, Workers& workers, Bell& bell, std::function<void(const std::string&)> say);
  Centre(const Centre&) = delete;
  Centre& operator=(const Centre&) = delete;

  /// Every till as clients see it.
  Json tills() const;
  /// How the chain is, for what watches over it.
  Json standing() const;
  PrinterReport report(const std::string& till, const std::string& printer) const;
  /// The printer's queue has changed.
  void wake(const std::string& printer);

 private:
  using Clock = std::chrono::steady_clock;

  struct Till {
    Status status;
    Seen seen;
    std::int64_t accepted = 0;  // what it was told and these older books count all the same
    std::set<std::string> printers;
    std::int64_t since = 0;  // of being online or not, for people
    bool isRestored = false;
    std::set<std::string> lineages = {};  // earlier starts that this centre has met
    Clock::time_point doubledUntil{};
  };
  struct Published {
    till::Job job;
    std::string till, printer;
    Clock::time_point due{}, heard{};
  };

  void turn();
  void load();
  void acceptOlderBooks();
  void remember(const std::string& name, const Till& till);
  void makeWorkers(const std::string& name, const Till& till);
  void noteStart(const std::string& name, Till& till, const std::string& lineage);
  void hearStatus(const std::string& name, const Status& status);
  void hearResults(const std::string& name, const Results& results);
  void store(const std::string& name, const till::Job& told);
  void tellSeen(const std::string& name, const Till& till);
  void publishQueued(const std::string& printer);
  void publishAgain();
  void publish(Published& published);
  bool takesJobs(const std::string& name) const;
  std::string blockedBy(const std::string& name, const Till& till) const;

  Workers& workers_;
  Bell& bell_;
  std::function<void(const std::string&)> say_;
  till::Books books_;
  mutable std::mutex mutex_;  // over the tills and the woken printers
  std::map<std::string, Till> tills_;
  std::set<std::string> woken_;
  std::map<std::string, Published> published_;  // by id: begun, and not final
  int session_ = 0;
  MqttLink link_;
  std::optional<Turns> turns_;
};

}  // namespace zentaro::service
