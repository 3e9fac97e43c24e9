// The command line.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "base/system/address.h"
#include "virtual-printer/faults/plan.h"
#include "virtual-printer/line/engine.h"

namespace virtual_printer {

using zentaro::system::Address;

struct Options {
  Identity identity{{"J-00000000-0", "COMERCIO DE DEMOSTRACION, C.A.", "ZPV0000001"}, 300};
  std::string link, state, log, control;
  std::vector<std::string> papers;
  std::optional<Address> tcp, web;
  bool opensBrowser = false;
  std::optional<LocalTime> clock;
  std::vector<Fault> faults;
  unsigned seed = 1;
  Speed speed = Speed::Immediate;
  bool isQuiet = false;
  bool isTemporary = false;
};

/// The options, or the exit code when the command line asked for help or was wrong; it has then been explained.
std::variant<Options, int> parseOptions(int count, const char* const* words);

}  // namespace virtual_printer
