// The command line.
#pragma once

#include <string>
#include <variant>

#include "device/works.h"

namespace printer {

struct Options {
  Identity identity;
  std::string link;
};

// The options, or the exit code when the command line asked for help or was wrong (then it has been
// explained).
std::variant<Options, int> parseOptions(int count, const char* const* words);

}  // namespace printer
