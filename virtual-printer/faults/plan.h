// The grammar of fault plans.
//
//   plan    = fault { ";" fault }
//   fault   = effect [ "=" value ] { clause }
//   clause  = "on" command { "," command }   only these commands, by name (item) or code (42); else any
//           | "after" n                      let the first n of them pass
//           | "chance" p "%"                 strike with this probability; else always
//           | "once" | "times" n | "always"  when it ends; else a wire effect strikes once, and a device
//                                            effect lasts until it is cleared
//
//   lose-answer on close          delay=13 on payment after 1          noise=inside chance 5% always
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "virtual-printer/faults/effect.h"

namespace virtual_printer {

enum class Place { Before, Inside };

struct Fault {
  Effect effect = Effect::LoseAnswer;
  // The one that the effect takes is set.
  std::chrono::milliseconds time{0};
  std::size_t bytes = 0;
  Place place = Place::Before;
  std::vector<std::uint8_t> commands;  // none: any command
  int after = 0;
  int chance = 100;          // percent
  std::optional<int> times;  // none: until cleared

  bool operator==(const Fault&) const = default;
};

/// Throws std::runtime_error that says which word is wrong and what is expected there.
std::vector<Fault> parsePlan(std::string_view text);

/// The fault in the words of the grammar.
std::string describe(const Fault& fault);

}  // namespace virtual_printer
