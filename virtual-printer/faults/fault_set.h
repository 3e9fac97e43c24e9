// The faults in force: counts frames, throws the seeded dice, and says what strikes.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "virtual-printer/device/works.h"
#include "virtual-printer/faults/plan.h"
#include "virtual-printer/wire/frame.h"

namespace virtual_printer {

class FaultSet {
 public:
  explicit FaultSet(unsigned seed = 1) : dice_{seed} {}

  void add(const std::vector<Fault>& plan);
  void clear() { armed_.clear(); }
  /// Removes the faults with this effect; how many there were.
  std::size_t clear(Effect effect);
  struct Listed {
    std::string plan;
    bool holds;  // a condition that has set in
  };
  std::vector<Listed> list() const;

  /// The faults that strike the frame of this command, in the order of the plan. hasPrevious: an answer that
  /// could be repeated has gone out before.
  std::vector<Fault> strike(std::uint8_t command, bool hasPrevious);

 private:
  struct Armed {
    Fault fault;
    int seen = 0;
    bool holds = false;  // a condition that has set in
  };
  bool strikes(Armed& armed, std::uint8_t command);

  std::vector<Armed> armed_;
  std::mt19937 dice_;
};

Conditions conditionsOf(const std::vector<Fault>& strikes);

}  // namespace virtual_printer
