// How long the computer has been running: the one clock that nobody sets.
#pragma once

#include <cstdint>
#include <string>

namespace zentaro::system {

struct Uptime {
  std::string boot;          // names the start of the computer; no two starts have the same
  std::int64_t seconds = 0;  // since then, the time asleep included
};

Uptime uptime();

}  // namespace zentaro::system
