// When faults begin and end.
#include "virtual-printer/faults/fault_set.h"

#include <algorithm>

namespace virtual_printer {

void FaultSet::add(const std::vector<Fault>& plan) {
  for (const Fault& fault : plan) armed_.push_back({fault});
}

std::size_t FaultSet::clear(Effect effect) {
  return std::erase_if(armed_, [&](const Armed& armed) { return armed.fault.effect == effect; });
}

std::vector<FaultSet::Listed> FaultSet::list() const {
  std::vector<Listed> faults;
  for (const Armed& armed : armed_) faults.push_back({describe(armed.fault), armed.holds});
  return faults;
}

std::vector<Fault> FaultSet::strike(std::uint8_t command, bool hasPrevious) {
  std::vector<Fault> struck;
  for (Armed& armed : armed_) {
    if (armed.fault.effect == Effect::RepeatAnswer && !hasPrevious) continue;
    if (!strikes(armed, command)) continue;
    struck.push_back(armed.fault);
    if (armed.fault.times) --*armed.fault.times;
  }
  std::erase_if(armed_, [](const Armed& armed) { return armed.fault.times == 0; });
  return struck;
}

bool FaultSet::strikes(Armed& armed, std::uint8_t command) {
  if (armed.holds) return true;
  const Fault& fault = armed.fault;
  const bool isMeant =
      fault.commands.empty() || std::ranges::find(fault.commands, command) != fault.commands.end();
  if (!isMeant || armed.seen++ < fault.after) return false;
  // The remainder is the same on every machine, which std::uniform_int_distribution does not promise.
  if (fault.chance < 100 && static_cast<int>(dice_() % 100) >= fault.chance) return false;
  armed.holds = entryOf(fault.effect).isCondition;
  return true;
}

Conditions conditionsOf(const std::vector<Fault>& strikes) {
  const auto holds = [&](Effect effect) {
    return std::any_of(strikes.begin(), strikes.end(),
                       [&](const Fault& fault) { return fault.effect == effect; });
  };
  return {holds(Effect::PaperNearEnd),   holds(Effect::PaperOut),   holds(Effect::CoverOpen),
          holds(Effect::MemoryNearFull), holds(Effect::MemoryFull), holds(Effect::DayChange)};
}

}  // namespace virtual_printer
