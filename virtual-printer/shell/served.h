// A part of the running printer that has descriptors of its own and is served by the loop.
#pragma once

#include <poll.h>

#include <vector>

namespace printer {

class Served {
 public:
  Served() = default;
  Served(const Served&) = delete;
  Served& operator=(const Served&) = delete;
  virtual ~Served() = default;

  virtual void watch(std::vector<pollfd>& watched) const = 0;
  /// Called after every poll; looks only where the poll saw something.
  virtual void serve(const std::vector<pollfd>& polled) = 0;
};

}  // namespace printer
