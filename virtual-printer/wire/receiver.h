// Finds commands in the bytes of a noisy line. Whatever is no command with a right checksum and no reset
// sequence is passed over, and the next good command is still found.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "virtual-printer/wire/frame.h"

namespace virtual_printer {

// Sent without a frame: eleven ascending bytes.
inline constexpr std::string_view resetBytes = "\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10\x11";

struct ResetSequence {};
struct Ignored {
  std::string bytes;
};
using Received = std::variant<Command, ResetSequence, Ignored>;

class Receiver {
 public:
  /// What the bytes complete, in their order. Bytes of an unfinished command wait for the next call.
  std::vector<Received> feed(std::string_view bytes);

 private:
  void take(char byte, std::vector<Received>& out);
  void frameAt(std::size_t end, std::vector<Received>& out);
  void ignore(std::size_t count, std::vector<Received>& out);

  std::string pending_;
  std::size_t resetProgress_ = 0;
};

}  // namespace virtual_printer
