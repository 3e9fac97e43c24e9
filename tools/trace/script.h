// The answers of a trace, given again in their order to whoever sends the same commands.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "tools/trace/exchange.h"

namespace zentaro::tools {

class Script {
 public:
  explicit Script(const std::vector<Exchange>& exchanges);

  struct Reply {
    std::string bytes;       // empty: the printer was silent, or the script is at its end
    bool isRecorded = true;  // false when the script has no further answer to this command
  };
  /// The next recorded answer to a command of that code. Its sequence number and checksum are moved to fit
  /// the request; one that was wrong in the trace stays wrong by as much.
  Reply answer(const virtual_printer::Command& request);

  /// How many answers have not been given.
  std::size_t left() const;

 private:
  std::map<std::uint8_t, std::deque<Exchange>> exchanges_;  // by command code
};

}  // namespace zentaro::tools
