// What waiting for a silent printer costs: processor time as a share of the wall time.
#include <cstdio>

#include "figures.h"
#include "library.h"
#include "line.h"
#include "measure.h"
#include "platform/host.h"
#include "sections.h"

namespace bench {

void measureWaiting(bool isShort) {
  const SilentLine line;
  Library library(line.device(), isShort ? 1 : 5);
  const auto share = [&] {
    const double begin = wallSeconds(), processor = processorSeconds();
    library.exchange();
    return (processorSeconds() - processor) / (wallSeconds() - begin) * 100;
  };
  std::vector<double> alone, withCallback;
  for (int round = 0; round < 3; ++round) {
    alone.push_back(share());
    zentaro::setYieldCallback([] {});
    withCallback.push_back(share());
    zentaro::setYieldCallback({});
  }
  std::printf("processor time of a time-out, share of its duration\n");
  std::printf("  without a callback %29.3f %%\n  with a callback    %29.3f %%\n", median(alone),
              median(withCallback));
  expectAtMost("waiting, % of a processor", median(alone), 0.5);
  expectAtMost("waiting with a callback, % of a processor", median(withCallback), 2);
}

}  // namespace bench
