// Late binding: finding a member by name, and calling it with the arguments that a caller gave.
#include "automation/object.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "automation/automation_error.h"
#include "automation/description.h"
#include "automation/variant.h"
#include "text/ascii.h"

namespace zentaro {
namespace {

bool takesNewValue(Access access) { return access == Access::Let || access == Access::Set; }

/// The accessors of one property stand one behind the other.
std::span<const Member> accessorsFrom(std::span<const Member> members, int memberId) {
  if (memberId < 0 || static_cast<std::size_t>(memberId) >= members.size())
    throw AutomationError(ErrorNumber::NoSuchMember);
  const auto rest = members.subspan(static_cast<std::size_t>(memberId));
  const auto isOther = [&](const Member& member) { return member.name != rest.front().name; };
  return rest.first(static_cast<std::size_t>(std::ranges::find_if(rest, isOther) - rest.begin()));
}

const Member& accessorFor(std::span<const Member> accessors, Access access) {
  const auto exact = std::ranges::find(accessors, access, &Member::access);
  if (exact != accessors.end()) return *exact;
  const auto other = std::ranges::find_if(accessors, takesNewValue, &Member::access);
  if (!takesNewValue(access) || other == accessors.end()) throw AutomationError(ErrorNumber::NoSuchMember);
  return *other;
}

/// One call's own copy of the arguments, complete; what the member changed goes back to the caller
/// when it ends, also by an exception, because the caller's variables are changed at once when a
/// member takes them by reference.
class Call {
 public:
  Call(const Member& member, std::span<Variant> given) : parameters_(member.parameters), given_(given) {
    const std::size_t newValues = takesNewValue(member.access) ? 1 : 0, most = parameters_.size() + newValues;
    if (given.size() < newValues || given.size() > most) throw AutomationError(ErrorNumber::WrongArguments);
    given_ = given.first(given.size() - newValues);
    for (std::size_t index = 0; index < parameters_.size(); ++index) values_.push_back(valueOf(index));
    if (newValues > 0) values_.push_back(given.back());
  }
  ~Call() {
    for (std::size_t index = 0; index < given_.size(); ++index) {
      if (isWrittenBack(index)) given_[index] = std::move(values_[index]);
    }
  }
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;

  std::span<Variant> values() { return values_; }

 private:
  // Only an optional parameter can be left out by the value that says so; any other takes it as it is.
  bool isGiven(std::size_t index) const {
    return index < given_.size() &&
           !(parameters_[index].isOptional() && given_[index].is(Variant::Kind::Missing));
  }
  bool isWrittenBack(std::size_t index) const {
    return isGiven(index) && parameters_[index].passing == Passing::ByReference;
  }
  Variant valueOf(std::size_t index) const {
    if (isGiven(index)) return given_[index];
    if (!parameters_[index].isOptional()) throw AutomationError(ErrorNumber::WrongArguments);
    return parameters_[index].fallback.value();
  }

  const ParameterList& parameters_;
  std::span<Variant> given_;  // without the new value
  std::vector<Variant> values_;
};

}  // namespace

int Object::memberId(std::string_view name) const {
  if (isNothing()) throw AutomationError(ErrorNumber::ObjectNotSet);
  const auto members = description().members;
  const auto hasName = [name](const Member& member) { return equalIgnoringCase(member.name, name); };
  const auto found = std::ranges::find_if(members, hasName);
  if (found == members.end()) throw AutomationError(ErrorNumber::NoSuchMember);
  return static_cast<int>(found - members.begin());
}

Variant Object::invoke(int memberId, Access access, std::span<Variant> arguments) const {
  if (isNothing()) throw AutomationError(ErrorNumber::ObjectNotSet);
  const Member& member = accessorFor(accessorsFrom(description().members, memberId), access);
  const std::shared_ptr<void> held =
      instance_;  // the host may let go of it while the member lets the host run
  Call call(member, arguments);
  return member.thunk(held.get(), call.values());
}

Variant Object::get(std::string_view name) const { return invoke(memberId(name), Access::Get, {}); }

void Object::put(std::string_view name, const Variant& value) const {
  Variant argument = value;
  const Access access = value.is(Variant::Kind::Object) ? Access::Set : Access::Let;
  invoke(memberId(name), access, {&argument, 1});
}

Variant Object::call(std::string_view name, std::span<Variant> arguments) const {
  return invoke(memberId(name), Access::Call, arguments);
}

}  // namespace zentaro
