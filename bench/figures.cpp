// Comparing figures with their limits.
#include "figures.h"

#include <cstdio>

namespace bench {
namespace {
Verdict all;
}

void expectAtMost(const char* what, double value, double limit) {
  const bool isGood = value > 0 && value <= limit;  // false for NaN
  if (!isGood) std::printf("  TOO MUCH: %s is %.2f, at most %.2f was expected\n", what, value, limit);
  ++(isGood ? all.passed : all.failed);
}

Verdict verdict() { return all; }

}  // namespace bench
