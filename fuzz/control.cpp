// Control lines of the virtual printer, and the fault plans in them.
#include "virtual-printer/shell/control.h"

#include "check.h"
#include "virtual-printer/device/device.h"

namespace {

using namespace virtual_printer;
using fuzz::require;

void checkPlan(std::string_view text) {
  std::vector<Fault> plan;
  try {
    plan = parsePlan(text);
  } catch (const std::runtime_error&) {
    return;
  }
  for (const Fault& fault : plan)
    require(parsePlan(describe(fault)) == std::vector<Fault>{fault}, "a fault described is the same fault");
}

void checkReply(const ControlReply& reply) {
  if (reply.order == ControlReply::Order::Sample) return;  // the sale's end is its reply
  const std::string_view last = fuzz::split(reply.text, '\n').back();
  require(last.starts_with("ok") || last.starts_with("error"), "every reply ends with ok or error");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::textOf(data, size);
  LineReader whole, pieces;
  std::vector<std::string> byByte;
  for (const char& c : text)
    for (std::string& line : pieces.feed({&c, 1})) byByte.push_back(std::move(line));
  const std::vector<std::string> lines = whole.feed(text);
  require(lines == byByte, "lines do not depend on the pieces in which they come");

  FaultSet faults(7);
  Works works({{}, 300}, {});
  for (const std::string& line : lines) {
    checkReply(control(line, faults, works));
    if (line.starts_with("fault ")) checkPlan(std::string_view(line).substr(6));
    conditionsOf(faults.strike(static_cast<std::uint8_t>(line.size()), true));
  }
  return 0;
}
