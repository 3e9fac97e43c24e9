// Follows the books: says each change in one line, counts what came of the jobs, and rings the bell for what other
// programs changed.
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <thread>

#include "service/http/bell.h"
#include "service/http/books_pool.h"

namespace zentaro::service {

/// Of the jobs that became final while this service ran.
struct Counts {
  std::map<std::tuple<std::string, std::string, std::string>, std::int64_t> jobs;  // printer, kind, verdict
  std::map<std::string, std::int64_t> seconds, ended;                              // by printer
  std::map<int, std::int64_t> requests;                                            // by code
  std::map<std::string, std::int64_t> lastZ;  // by printer: when it was printed, in earlier runs, too
  std::int64_t recoveries = 0;                // jobs that were unknown and then were not
};

class Chronicle {
 public:
  using Say = std::function<void(const std::string& line)>;

  /// `say` is called by one thread.
  Chronicle(BooksPool& books, Bell& bell, Say say);
  Chronicle(const Chronicle&) = delete;
  Chronicle& operator=(const Chronicle&) = delete;
  ~Chronicle() {
    bell_.close();
    thread_.join();
  }

  /// A request was answered with this code.
  void answered(int code);
  Counts counts() const;

 private:
  void follow();
  void readOn();
  void note(const till::Job& job);
  void noteZ(const till::Job& job);

  BooksPool& books_;
  Bell& bell_;
  Say say_;
  std::int64_t revision_ = 0, dataVersion_ = 0;
  std::set<std::string> unknown_;
  mutable std::mutex mutex_;
  Counts counts_;
  std::unique_ptr<till::Books> own_;  // whose view of the file tells that others changed it
  std::thread thread_;
};

}  // namespace zentaro::service
