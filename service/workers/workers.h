// The printers of a service by their names, each with its worker.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "service/workers/worker.h"

namespace zentaro::service {

class Workers {
 public:
  explicit Workers(std::vector<std::unique_ptr<Worker>> workers) {
    for (std::unique_ptr<Worker>& worker : workers) {
      std::string name = worker->name();
      workers_.emplace(std::move(name), std::move(worker));
    }
  }

  /// Null for a name that no printer has.
  Worker* find(const std::string& name) const {
    const auto found = workers_.find(name);
    return found == workers_.end() ? nullptr : found->second.get();
  }
  /// In the order of their names.
  std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const auto& [name, worker] : workers_) names.push_back(name);
    return names;
  }
  /// Each ends what it is printing and begins nothing more.
  void end() {
    for (const auto& [name, worker] : workers_) worker->end();
    for (const auto& [name, worker] : workers_) worker->join();
  }

 private:
  std::map<std::string, std::unique_ptr<Worker>, std::less<>> workers_;
};

}  // namespace zentaro::service
