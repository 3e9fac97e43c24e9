// A sale of 1,000 lines at the pace of 9600 baud: how much of the wall time is not the line.
#include <cstdio>

#include "figures.h"
#include "library.h"
#include "line.h"
#include "measure.h"
#include "sections.h"

namespace bench {

void measurePacedSale(bool isShort) {
  const int blocks = isShort ? 2 : 20, linesPerBlock = 50;
  const Responder responder(9600);
  Library library(responder.printer());
  BareClient bare(responder.printer());
  const auto timeOf = [&](const auto& exchange) {
    const double begin = wallSeconds();
    for (int i = 0; i < linesPerBlock; ++i) exchange();
    return wallSeconds() - begin;
  };
  double byLibrary = 0;
  std::vector<double> shares;
  for (int block = 0; block < blocks; ++block) {
    const double wall = timeOf([&] { library.exchange(); });
    const double least = timeOf([&] { bare.exchange(); });
    byLibrary += wall;
    shares.push_back((wall - least) / wall * 100);
  }
  std::printf(
      "a sale of %d lines at 9600 baud: %.1f s, of which beyond the bare calls %.2f %%  (%.2f to %.2f)\n",
      blocks * linesPerBlock, byLibrary, median(shares), percentile(shares, 0.05), percentile(shares, 0.95));
  expectAtMost("the sale, of the bare calls", 1 / (1 - median(shares) / 100), 1.03);
}

}  // namespace bench
