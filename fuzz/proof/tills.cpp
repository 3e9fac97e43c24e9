// Two printers on two threads of one process, each selling under ids of its own, with one set of books.
//
//   proof-tills [SALES]     how many each thread makes; 20 by default
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "library.h"
#include "peer.h"
#include "till/zentaro_till.h"

namespace {

using namespace zentaro;

constexpr auto document =
    R"({"document": "invoice", "lines": [{"description": "Cafe", "price": 10, "tax": 16}],
  "payments": [{"amount": 20}]})";

/// How many were printed under the number that was their turn, and not again.
int sellAll(const std::string& device, const std::string& prefix, int sales) {
  bench::Library library(device);
  int good = 0;
  for (int number = 1; number <= sales; ++number) {
    till::SellOptions options;
    options.id = prefix + std::to_string(number);
    const till::Verdict first = sell(library.printer(), till::documentOf(document), options);
    const till::Verdict again = sell(library.printer(), till::documentOf(document), options);
    good += first.ending == till::Ending::Printed && first.number == number &&
            again.ending == till::Ending::AlreadyPrinted;
  }
  return good;
}

}  // namespace

int main(int count, char** words) {
  const int sales = count > 1 ? std::atoi(words[1]) : 20;
  const proof::Peer one({"--serial", "ZPV0000001"}), two({"--serial", "ZPV0000002"});
  ::setenv("ZENTARO_BOOKS", (one.folder() / "books.db").c_str(), 1);
  ::setenv("XDG_STATE_HOME", one.folder().c_str(), 1);
  int ofOther = 0;
  std::thread other([&] { ofOther = sellAll(two.device(), "B", sales); });
  const int ofOne = sellAll(one.device(), "A", sales);
  other.join();
  const bool isGood = ofOne == sales && ofOther == sales &&
                      till::jobs(10 * sales).size() == 2 * static_cast<std::size_t>(sales);
  std::printf("  %d and %d of %d sales printed once on two threads: %s\n", ofOne, ofOther, sales,
              isGood ? "ok" : "FAILED");
  return isGood ? 0 : 1;
}
