// One exchange over a pseudo-terminal: the library against bare system calls on the same line, against the
// same bare calls a second time (how much the reference differs from itself), and against libmodbus.
#include <modbus.h>

#include <array>
#include <cstdio>

#include "figures.h"
#include "library.h"
#include "line.h"
#include "measure.h"
#include "sections.h"

namespace bench {
namespace {

struct Contender {
  const char* name;
  std::function<void()> exchange;
  std::vector<double> times, tails;        // of each exchange
  std::vector<double> medians, processor;  // of each round
};

void runRound(Contender& contender, const Responder& responder, int exchanges) {
  std::vector<double> times;
  const double processorBefore = processorSeconds();
  for (int i = 0; i < exchanges; ++i) {
    const double begin = wallSeconds();
    contender.exchange();
    const double end = wallSeconds();
    times.push_back(end - begin);
    contender.tails.push_back(end - responder.answeredAt());
  }
  contender.processor.push_back((processorSeconds() - processorBefore) / exchanges);
  contender.medians.push_back(median(times));
  contender.times.insert(contender.times.end(), times.begin(), times.end());
}

std::vector<double> ratios(const std::vector<double>& a, const std::vector<double>& b) {
  std::vector<double> result;
  for (std::size_t i = 0; i < a.size(); ++i) result.push_back(a[i] / b[i]);
  return result;
}

void showRatio(const char* name, const std::vector<double>& a, const std::vector<double>& b, double limit) {
  const auto all = ratios(a, b);
  std::printf("  %-52s %6.2f   (%.2f to %.2f)\n", name, median(all), percentile(all, 0.05),
              percentile(all, 0.95));
  expectAtMost(name, median(all), limit);
}

void showCosts(Library& library, BareClient& bare) {
  constexpr int exchanges = 100;
  const auto costs = [&](const char* name, double callsAtMost, double allocatedAtMost,
                         const std::function<void()>& exchange) {
    exchange();
    const std::uint64_t before = allocations();
    for (int i = 0; i < exchanges; ++i) exchange();
    const double allocated = static_cast<double>(allocations() - before) / exchanges;
    const auto calls = systemCalls([&] {
      for (int i = 0; i < exchanges; ++i) exchange();
    });
    std::printf("  %-20s system calls %5.2f   allocations %5.2f\n", name,
                static_cast<double>(calls.size()) / exchanges, allocated);
    expectAtMost("system calls of an exchange", static_cast<double>(calls.size()) / exchanges, callsAtMost);
    expectAtMost("allocations of an exchange", allocated, allocatedAtMost);
  };
  std::printf("a whole exchange costs\n");
  costs("library", 4.5, 12, [&] { library.exchange(); });
  costs("bare", 3.5, 2, [&] { bare.exchange(); });
}

}  // namespace

void measureExchange(bool isShort) {
  const int rounds = isShort ? 10 : 100, exchanges = 200;
  Responder responder;
  Library library(responder.printer());
  BareClient bare(responder.printer());
  modbus_t* modbus = modbus_new_rtu(responder.modbus().c_str(), 115200, 'N', 8, 1);
  modbus_set_slave(modbus, 1);
  if (modbus_connect(modbus) != 0) std::printf("libmodbus: %s\n", modbus_strerror(errno));
  std::array<std::uint16_t, 12> written{};
  std::array<std::uint16_t, 10> read{};

  showCosts(library, bare);
  Contender byLibrary{"library", [&] { library.exchange(); }, {}, {}, {}, {}};
  Contender byBare{"bare", [&] { bare.exchange(); }, {}, {}, {}, {}};
  Contender byBareAgain{"bare again", byBare.exchange, {}, {}, {}, {}};
  Contender byModbus{"libmodbus",
                     [&] {
                       modbus_write_and_read_registers(modbus, 0, written.size(), written.data(), 0,
                                                       read.size(), read.data());
                     },
                     {},
                     {},
                     {},
                     {}};
  const std::array contenders{&byLibrary, &byBare, &byModbus, &byBareAgain};
  for (int round = 0; round < rounds; ++round)
    for (Contender* contender : contenders) runRound(*contender, responder, exchanges);
  modbus_free(modbus);

  std::printf("a whole exchange, microseconds             p50      p99   processor   after the last byte\n");
  for (const Contender* contender : contenders)
    std::printf("  %-36s %8.1f %8.1f    %8.1f   %8.1f\n", contender->name,
                percentile(contender->times, 0.5) * 1e6, percentile(contender->times, 0.99) * 1e6,
                median(contender->processor) * 1e6, median(contender->tails) * 1e6);
  std::printf("ratios of the rounds, median (5th to 95th percentile)\n");
  showRatio("wall time, library / bare", byLibrary.medians, byBare.medians, 2.2);
  showRatio("wall time, bare / bare again", byBare.medians, byBareAgain.medians, 2);
  showRatio("wall time, library / libmodbus", byLibrary.medians, byModbus.medians, 2);
  showRatio("processor time, library / bare", byLibrary.processor, byBare.processor, 3);
  showRatio("processor time, bare / bare again", byBare.processor, byBareAgain.processor, 1.5);
  showRatio("processor time, library / libmodbus", byLibrary.processor, byModbus.processor, 2.5);
}

}  // namespace bench
