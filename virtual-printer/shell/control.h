// The control language: one line in, one reply out. The same on standard input and on the control socket.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "virtual-printer/device/device.h"
#include "virtual-printer/faults/fault_set.h"

namespace virtual_printer {

struct ControlReply {
  std::string text;  // lines; the last begins with "ok" or "error"
  enum class Order { None, Sample, Quit };
  Order order = Order::None;  // what the program does then; a sample has a reply of its own
};

/// Who answers the lines of a channel.
using ReplyTo = std::function<std::string(const std::string&)>;

ControlReply control(std::string_view line, FaultSet& faults, const Works& works);

/// Cuts a stream of bytes into lines. A line without end is dropped before it fills the memory.
class LineReader {
 public:
  std::vector<std::string> feed(std::string_view bytes);

 private:
  std::string pending_;
};

}  // namespace virtual_printer
