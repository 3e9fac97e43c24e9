// Memory, threads, and what a host's callback may do in the middle of an operation.
//
//   proof-threads [EXCHANGES]     how many exchanges are made to see that nothing grows; a million by default
#include <sys/resource.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "library.h"
#include "line.h"
#include "peer.h"
#include "platform/host.h"

namespace {

using namespace zentaro;

int failed = 0, passed = 0;

void check(bool holds, const char* what) {
  ++(holds ? passed : failed);
  std::printf("  %s %s\n", holds ? "ok    " : "FAILED", what);
}

int status(CZentaro& z) { return z.StatusIF(u"N").int32(); }

void exchangesWithoutGrowth(long count) {
  const bench::Responder responder;
  bench::Library library(responder.printer());
  long bad = 0, before = 0;
  std::size_t descriptors = 0;
  for (long i = 0; i < count; ++i) {
    if (i == count / 10) before = proof::residentKilobytes(), descriptors = proof::openDescriptors();
    library.exchange();
    bad += library.printer().nEnvironmentError != ENVERR_OK;
  }
  const long growth = proof::residentKilobytes() - before;
  std::printf("  %ld exchanges, %ld of them not good; memory grew by %ld KiB after the first tenth\n", count,
              bad, growth);
  check(bad == 0, "every exchange is good");
  // A sanitizer keeps what was freed for a while.
  check(growth < 512, "memory does not grow");
  check(proof::openDescriptors() == descriptors, "no descriptor is left open");
}

void twoPrintersOnTwoThreads(long count) {
  std::array<long, 2> good{};
  const std::array<bench::Responder, 2> responders;
  std::array<std::thread, 2> threads;
  for (std::size_t i = 0; i < 2; ++i)
    threads[i] = std::thread([&, i] {
      for (long turn = 0; turn < count / 100; ++turn) {
        bench::Library library(responders[i].printer());
        for (int exchange = 0; exchange < 100; ++exchange) {
          library.exchange();
          good[i] += library.printer().nEnvironmentError == ENVERR_OK;
        }
      }
    });
  for (std::thread& thread : threads) thread.join();
  std::printf("  %ld and %ld good exchanges on two threads, the port opened anew for every 100\n", good[0],
              good[1]);
  check(good[0] == good[1] && good[0] == count / 100 * 100,
        "two threads with two printers do not disturb each other");
}

/// Calls `inside` once, at the first yield of an exchange, and gives the outcome of the exchange.
template <class Inside>
int exchangeWith(CZentaro& z, Inside inside) {
  bool isDone = false;
  setYieldCallback([&] {
    if (std::exchange(isDone, true)) return;
    inside();
  });
  int outcome = -99;
  try {
    outcome = status(z);
  } catch (const std::runtime_error&) {
    outcome = -100;
  }
  setYieldCallback({});
  return outcome;
}

void callbacks() {
  const bench::Responder first, second;
  bench::Library library(first.printer());
  CZentaro& z = library.printer();
  check(exchangeWith(z, [] { throw std::runtime_error("the host stops"); }) == -100,
        "what a callback throws reaches the host");
  // The answer that nobody waited for is still to come, and keeps later ones an answer behind until the line
  // has been quiet and is opened anew.
  for (int tries = 0; tries < 20 && status(z) != 0; ++tries) {
    z.PortOpen(false);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    z.PortOpen(true);
  }
  check(status(z) == 0, "and the object goes on");

  bench::Library other(second.printer(), 2, 2);
  int inner = -1;
  check(exchangeWith(z, [&] { inner = status(other.printer()); }) == 0 && inner == 0,
        "a callback may use another object");

  auto doomed = std::make_unique<CZentaro>();
  doomed->CommPort = 3;
  check(exchangeWith(z, [&] { doomed.reset(); }) == 0, "a callback may destroy another object");

  std::u16string frame;
  check(exchangeWith(other.printer(), [&] { frame = z.BuildOMB(0x48, {}); }) == 0 && frame.size() == 8,
        "a callback may build frames with another object");
  const int outcome = exchangeWith(z, [&] { z.BuildOMB(0x48, {}); });
  check(outcome == 0 || outcome == 4, "a frame built with the object itself moves its sequence at most");
  check(status(z) == 0, "and the next exchange is good");
}

}  // namespace

int main(int count, char** words) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const long exchanges = count > 1 ? std::atol(words[1]) : 1'000'000;
  callbacks();
  twoPrintersOnTwoThreads(std::min(exchanges, 100'000L));
  exchangesWithoutGrowth(exchanges);
  std::printf("%d passed, %d failed\n", passed, failed);
  return failed == 0 ? 0 : 1;
}
