// Clocks, percentiles, and the counting of allocations and system calls.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <functional>
#include <vector>

namespace bench {

inline double clockSeconds(clockid_t clock) {
  timespec time{};
  ::clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}
inline double wallSeconds() { return clockSeconds(CLOCK_MONOTONIC); }
inline double processorSeconds() { return clockSeconds(CLOCK_PROCESS_CPUTIME_ID); }

/// The value below which that share of them lies; 0 without any.
inline double percentile(std::vector<double> values, double share) {
  if (values.empty()) return 0;
  const auto at = static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
  std::nth_element(values.begin(), values.begin() + at, values.end());
  return values[static_cast<std::size_t>(at)];
}
inline double median(std::vector<double> values) { return percentile(std::move(values), 0.5); }

/// How often operator new was called in this process so far.
std::uint64_t allocations();

/// The system calls that `work` makes, by number of the call, counted in a traced child process. Calls that
/// only read a clock do not reach the kernel and do not count.
std::vector<long> systemCalls(const std::function<void()>& work);

}  // namespace bench
