// The one way by which a host's call reaches a member, whether it came by name, by dispatch id or
// through a slot.
#pragma once

#include <span>

#include "automation/automation_error.h"
#include "com/instance.h"

namespace zentaro::com {

/// An argument that the library has no kind for.
class WrongArgument : public AutomationError {
 public:
  WrongArgument(const AutomationError& error, const VARIANT* argument)
      : AutomationError(error), argument_(argument) {}
  const VARIANT* argument() const { return argument_; }

 private:
  const VARIANT* argument_;
};

/// Calls a member with arguments in the order of its parameters, the new value of an assignment behind them;
/// null stands for one that was left out. What the member changes is written back into the host's variables,
/// also when it raises. `result`, if any, must be empty. Raises what the member raises, and WrongArgument.
void callMember(Instance& instance, int memberId, Access access, std::span<VARIANT* const> arguments,
                VARIANT* result);

/// The functions of IDispatch, the first seven of every dual interface.
extern const Slot dispatchSlots[7];

/// A call through a slot: the member is an accessor by its place in the interface, and a failure is
/// kept for GetErrorInfo.
HRESULT callSlot(Face& self, std::size_t place, std::span<VARIANT> arguments, VARIANT* result) noexcept;

}  // namespace zentaro::com
