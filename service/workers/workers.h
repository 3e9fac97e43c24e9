// The printers of a service by their names, each with its worker. Those of tills are found by name and not listed: a
// chain has thousands.
#pragma once

#include <map>
#include <memory>
#include <shared_mutex>
#include <string>
#include <vector>

#include "service/workers/worker.h"

namespace zentaro::service {

class Workers {
 public:
  explicit Workers(std::vector<std::unique_ptr<Worker>> workers) {
    for (std::unique_ptr<Worker>& worker : workers) add(std::move(worker));
  }

  /// At any time, from any thread; one of a name that is known is thrown away.
  void add(std::unique_ptr<Worker> worker) {
    const std::unique_lock lock{mutex_};
    std::string name = worker->name();
    workers_.emplace(std::move(name), std::move(worker));
  }
  /// Null for a name that no printer has. It stays as long as this does.
  Worker* find(const std::string& name) const {
    const std::shared_lock lock{mutex_};
    const auto found = workers_.find(name);
    return found == workers_.end() ? nullptr : found->second.get();
  }
  /// Of the printers here, in their order.
  std::vector<std::string> names() const {
    const std::shared_lock lock{mutex_};
    std::vector<std::string> names;
    for (const auto& [name, worker] : workers_)
      if (worker->till().empty()) names.push_back(name);
    return names;
  }
  /// Each ends what it is printing and begins nothing more.
  void end() {
    const std::shared_lock lock{mutex_};
    for (const auto& [name, worker] : workers_) worker->end();
    for (const auto& [name, worker] : workers_) worker->join();
  }

 private:
  mutable std::shared_mutex mutex_;
  std::map<std::string, std::unique_ptr<Worker>, std::less<>> workers_;
};

}  // namespace zentaro::service
