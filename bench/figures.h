// What the measured figures may be at most: far enough above what was measured on idle machines that a
// busy one passes, near enough that a second system call, a copy or a busy wait does not.
#pragma once

namespace bench {

/// Remembers a figure above its limit, and one that cannot be (nothing was measured), and says so.
void expectAtMost(const char* what, double value, double limit);

/// The figures that were compared, and how many of them were too large.
struct Verdict {
  int passed = 0, failed = 0;
};
Verdict verdict();

}  // namespace bench
