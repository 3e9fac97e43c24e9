// What one client, and all of them together, may take of the server.
#pragma once

#include <chrono>
#include <cstddef>

namespace zentaro::http {

struct Limits {
  std::size_t head = 16'384;  // bytes up to the blank line
  std::size_t body = 256'000;
  std::chrono::milliseconds request{
      10'000};                    // from its connection to its last byte; each write of the answer
  std::size_t connections = 128;  // fewer where the process may have few descriptors
  int streams = 32;
};

}  // namespace zentaro::http
