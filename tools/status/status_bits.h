// What the bits of the status words mean for whoever stands at the printer. Beyond bit 15 they differ from model to
// model; those of the virtual printer are known.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zentaro::tools {

/// Whether the bits of the status words have a known meaning: those of the virtual printer have.
enum class Bits { Known, Unknown };

struct StatusWords {
  std::int32_t printer = 0, fiscal = 0;
};

/// A state of the printer that wants something done.
struct Condition {
  std::string code;          // "paper-out": what programs go by
  std::string text, advice;  // what is the case, and what to do
};

/// Those that the words tell; `portWords` are the options by which another command uses the same printer.
std::vector<Condition> conditionsIn(const StatusWords& words, Bits bits, const std::string& portWords);

/// The bits that say nothing here.
StatusWords unreadable(const StatusWords& words, Bits bits);

}  // namespace zentaro::tools
