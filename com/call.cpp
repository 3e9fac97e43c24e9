// Calls: arguments in, the member itself, changed arguments and the result out.
#include "com/call.h"

#include <vector>

#include "automation/description.h"
#include "com/errors.h"
#include "com/values.h"

namespace zentaro::com {
namespace {

/// The arguments of one call, as the library takes them and as the host gave them.
class Arguments {
 public:
  explicit Arguments(std::span<VARIANT* const> given) : given_(given) {
    for (const VARIANT* argument : given)
      before_.push_back(argument == nullptr ? Variant::missing() : taken(*argument));
    now_ = before_;
  }

  std::span<Variant> values() { return now_; }

  void writeChangesBack() {
    for (std::size_t index = 0; index < given_.size(); ++index) {
      if (given_[index] != nullptr && !isSame(before_[index], now_[index]))
        writeBack(now_[index], *given_[index]);
    }
  }

 private:
  static Variant taken(const VARIANT& argument) {
    try {
      return fromHost(argument);
    } catch (const AutomationError& error) {
      throw WrongArgument(error, &argument);
    }
  }

  std::span<VARIANT* const> given_;
  std::vector<Variant> before_, now_;
};

}  // namespace

void callMember(Instance& instance, int memberId, Access access, std::span<VARIANT* const> given,
                VARIANT* result) {
  Arguments arguments(given);
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the host may let go of it during the call
  const Object object = instance.object();
  Variant value;
  try {
    value = object.invoke(memberId, access, arguments.values());
  } catch (...) {
    guarded([&] {
      arguments.writeChangesBack();
      return S_OK;
    });
    throw;
  }
  arguments.writeChangesBack();
  if (result != nullptr) toHost(value, *result);
}

HRESULT callSlot(Face& self, std::size_t place, std::span<VARIANT> arguments, VARIANT* result) noexcept {
  Reference<Instance> alive;  // the host may let go of it while the call lets the host run
  self.instance->AddRef();
  *alive.out() = self.instance;
  return guarded(
      [&] {
        std::vector<VARIANT*> given;
        for (VARIANT& argument : arguments) given.push_back(&argument);
        const Member& member = alive->object().description().members[place];
        callMember(*alive.get(), static_cast<int>(place), member.access, given, result);
        return S_OK;
      },
      [&](const Failure& failure) { return reported(failure, alive->hostClass().identifiers->interfaceId); });
}

}  // namespace zentaro::com
