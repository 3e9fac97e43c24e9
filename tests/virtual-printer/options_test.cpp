// What the command line says, as the program understands it.
#include "virtual-printer/shell/options.h"

#include <gtest/gtest.h>

#include "virtual-printer/fiscal/calendar.h"

namespace virtual_printer::options_test {

Options parsed(std::vector<const char*> words) {
  words.insert(words.begin(), "zentaro-printer");
  const auto result = parseOptions(static_cast<int>(words.size()), words.data());
  EXPECT_TRUE(std::holds_alternative<Options>(result));
  return std::holds_alternative<Options>(result) ? std::get<Options>(result) : Options{};
}

// All that a command line can set, in one text.
std::string shown(const Options& options) {
  std::string text = "igtf " + std::to_string(options.identity.igtfRate);
  text += " seed " + std::to_string(options.seed);
  if (options.tcp) text += " tcp " + authority(*options.tcp);
  if (options.web) text += " web " + authority(*options.web);
  if (options.clock) text += " clock " + written(*options.clock, stampPattern);
  for (const std::string& paper : options.papers) text += " paper " + paper;
  for (const Fault& fault : options.faults) text += " fault " + describe(fault);
  if (options.speed == Speed::Realtime) text += " slow";
  if (options.isQuiet) text += " quiet";
  if (options.isTemporary) text += " temporary";
  if (options.opensBrowser) text += " open";
  return text;
}

TEST(Options, AreUnderstood) {
  const struct {
    std::vector<const char*> words;
    const char* meant;
  } rows[] = {
      {{}, "igtf 300 seed 1"},
      {{"--igtf", "2.3"}, "igtf 230 seed 1"},
      {{"--igtf", "0.29", "--seed", "7"}, "igtf 29 seed 7"},
      {{"--web"}, "igtf 300 seed 1 web 127.0.0.1:8210"},
      {{"--web", "0.0.0.0:80", "--open"}, "igtf 300 seed 1 web 0.0.0.0:80 open"},
      {{"--tcp", "[::1]:0", "--temporary"}, "igtf 300 seed 1 tcp [::1]:0 temporary"},
      {{"--clock", "2026-01-31T10:00"}, "igtf 300 seed 1 clock 2026-01-31T10:00:00"},
      {{"--clock", "2026-12-31T23:59:59"}, "igtf 300 seed 1 clock 2026-12-31T23:59:59"},
      {{"--paper", "a.txt", "--paper", "b.svg"}, "igtf 300 seed 1 paper a.txt paper b.svg"},
      {{"--fault", "delay=0.5; noise", "--fault", "paper-out", "--quiet"},
       "igtf 300 seed 1 fault delay=0.5 once fault noise=before once fault paper-out always quiet"},
      {{"--realtime", "--link", "x"}, "igtf 300 seed 1 slow"},
  };
  for (const auto& row : rows) EXPECT_EQ(shown(parsed(row.words)), row.meant);
  const Options named = parsed({"--rif", "J-1", "--owner", "BODEGA", "--serial", "ABC123", "--state", "s",
                                "--log", "l", "--control", "c", "--link", "k"});
  const Owner& owner = named.identity.owner;
  EXPECT_EQ(owner.rif + "|" + owner.name + "|" + owner.serial, "J-1|BODEGA|ABC123");
  EXPECT_EQ(named.state + "|" + named.log + "|" + named.control + "|" + named.link, "s|l|c|k");
}

}  // namespace virtual_printer::options_test
