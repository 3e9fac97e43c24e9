// What came of one command.
#pragma once

#include <string>

namespace zentaro::till {

/// Refused: the printer, or the library before sending, has done nothing. Lost: no usable answer (outcomes 1 to 4),
/// so nobody knows whether it took effect.
enum class Fate { Done, Refused, Lost };

struct Reply {
  Fate fate = Fate::Done;
  std::string text =
      {};  // why, unless it is done: the printer's own words, or what came instead of an answer
  std::string printer = {};  // the printer's own words alone
};

}  // namespace zentaro::till
