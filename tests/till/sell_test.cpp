// The calls of a till from a program's own threads, on virtual printers.
#include <gtest/gtest.h>

#include <future>

#include "support/process.h"
#include "till/line/overlay_settings.h"
#include "till/zentaro_till.h"
#include "tools/connection/known_settings.h"
#include "tools/connection/virtual_printer.h"

namespace zentaro::till::sell_test {

constexpr auto coffee = R"({"document": "invoice", "lines": [{"description": "Cafe", "price": 10, "tax": 16}],
  "payments": [{"amount": 20}]})";

/// A printer object whose port 1 is the device, on the thread that made it.
class OpenPrinter {
 public:
  explicit OpenPrinter(const std::string& device)
      : settings_(*services().settings), scope_(with(settings_, device)) {
    printer.CommPort = 1;
    printer.PortOpen(true);
  }
  ~OpenPrinter() { printer.PortOpen(false); }

 private:
  static Services with(OverlaySettings& settings, const std::string& device) {
    settings.replace(tools::portSection, tools::portKey(1), utf16(device));
    Services changed = services();
    changed.settings = &settings;
    return changed;
  }

  OverlaySettings settings_;
  ServicesScope scope_;

 public:
  CZentaro printer;
};

SellOptions named(const std::string& id) {
  SellOptions options;
  options.id = id;
  return options;
}

class TillCalls : public testing::Shell {};

TEST_F(TillCalls, SellOnTwoPrintersOnTwoThreads) {
  const tools::VirtualPrinter one({"--realtime", "--serial", "ZPV0000001"}),
      two({"--realtime", "--serial", "ZPV0000002"});
  constexpr int sales = 3;
  const auto sellAll = [&](const std::string& device, const std::string& prefix) {
    OpenPrinter open(device);
    for (int number = 1; number <= sales; ++number) {
      const Verdict verdict = sell(open.printer, documentOf(coffee), named(prefix + std::to_string(number)));
      EXPECT_EQ(nameOf(verdict.ending), "printed") << prefix << verdict.cause.text;
      EXPECT_EQ(verdict.number, number) << prefix;
    }
  };
  std::future<void> other = std::async(std::launch::async, [&] { sellAll(two.device(), "B"); });
  sellAll(one.device(), "A");
  other.get();
  EXPECT_EQ(jobs().size(), 2U * sales);
  EXPECT_EQ(find("B3")->before.machine, "ZPV0000002");
}

TEST_F(TillCalls, TellEveryEndAsAVerdictAndOnlyMisuseAsAnError) {
  write("settings.ini", "[Config\\EPSONZT]\nTimeOutZT=1\n");
  const tools::VirtualPrinter virtualPrinter;
  OpenPrinter open(virtualPrinter.device());
  const auto end = [&](const SellOptions& options) {
    return std::string(nameOf(sell(open.printer, documentOf(coffee), options).ending));
  };
  SellOptions stopped = named("F-1");
  int asked = 0;
  stopped.stop.isWanted = [&asked] { return ++asked > 6; };
  const Verdict cancelled = sell(open.printer, documentOf(coffee), stopped);
  EXPECT_EQ(nameOf(cancelled.ending), "not-printed");
  EXPECT_TRUE(cancelled.wasOpened && cancelled.cause.kind == Cause::Kind::Stopped);
  EXPECT_EQ(end(named("F-1")), "printed") << "what was not printed is printed under the same id";
  EXPECT_EQ(find("F-1")->attempt, 2);
  EXPECT_EQ(end(named("F-1")), "already-printed");
  EXPECT_TRUE(open.printer.isPortOpen);

  CloseOptions z;
  z.id = "Z-1";
  const ClosingVerdict closed = close(open.printer, Kind::Z, z);
  EXPECT_EQ(closed.number, 1);
  EXPECT_EQ(closed.figures->BaseGravable1, Currency::fromScaled(100000));
  EXPECT_EQ(nameOf(close(open.printer, Kind::Z, z).ending), "already-printed");
  EXPECT_TRUE(settle(open.printer).open.empty());

  EXPECT_THROW(end(named("F 2")), WrongUse);
  EXPECT_THROW(documentOf(R"({"document": "invoice"})"), WrongUse);
  EXPECT_EQ(check(R"({"document": "invoice"})").problems.front().path, "lines");
  open.printer.PortOpen(false);
  EXPECT_THROW(end(named("F-2")), WrongUse);

  const tools::VirtualPrinter silent({"--fault", "lose-command"});
  OpenPrinter deaf(silent.device());
  stopped.id = "F-3";
  stopped.stop = {[] { return true; }, "enough"};
  const Verdict unheard = sell(deaf.printer, documentOf(coffee), stopped);
  EXPECT_EQ(std::string(nameOf(unheard.ending)) + " " + unheard.cause.text, "unreachable enough");
}

TEST_F(TillCalls, KnowWhatAnOldJournalSays) {
  writeOldJournal();
  EXPECT_EQ(find("K")->state, State::Printed);
  EXPECT_EQ(jobs().size(), 1U);
}

// A full disk, another's file: with an id nothing leaves; without one the cashier's customer is served.
TEST_F(TillCalls, PrintWithoutBooksOnlyWhatNobodyNamed) {
  ::setenv("ZENTARO_BOOKS", "/dev/null/books.db", 1);
  const tools::VirtualPrinter virtualPrinter;
  OpenPrinter open(virtualPrinter.device());
  const Verdict refused = sell(open.printer, documentOf(coffee), named("F-1"));
  EXPECT_EQ(nameOf(refused.ending), "not-printed");
  EXPECT_EQ(refused.cause.kind, Cause::Kind::Books);
  EXPECT_EQ(nameOf(sell(open.printer, documentOf(coffee), {}).ending), "printed");
}

}  // namespace zentaro::till::sell_test
