// A reference to an automation object of any class, used through the description of its class.
#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "zentaro_api.h"

namespace zentaro {

class Variant;
struct ClassDescription;
enum class Access;

class ZENTARO_API Object {
 public:
  /// The null object reference.
  Object() = default;
  Object(const ClassDescription& description, std::shared_ptr<void> instance)
      : description_(&description), instance_(std::move(instance)) {}

  bool isNothing() const { return instance_ == nullptr; }
  /// Of an object that is not null.
  const ClassDescription& description() const { return *description_; }
  void* instance() const { return instance_.get(); }
  bool operator==(const Object& other) const { return instance_ == other.instance_; }

  /// The member's id, found without regard to case: the index of the first of the members of that
  /// name. Raises 438 for an unknown name, 91 for the null reference.
  int memberId(std::string_view name) const;
  /// Reads, assigns or calls a member; a property that has only one of Let and Set takes it for
  /// both. The new value is the last argument of a Let or Set. Optional arguments may be left out
  /// at the end or given as missing. What the member changes in a by-reference argument is written
  /// back, also when it raises. Raises 438 when the member has no such access, 450 for a wrong
  /// number of arguments, 91 for the null reference, and what the member itself raises. The instance
  /// lives until the member has returned, also when the host gives up this reference meanwhile.
  Variant invoke(int memberId, Access access, std::span<Variant> arguments) const;

  // The three kinds of access by name; a reference to an object is assigned by Set, anything else by Let.
  Variant get(std::string_view name) const;
  void put(std::string_view name, const Variant& value) const;
  Variant call(std::string_view name, std::span<Variant> arguments) const;

 private:
  const ClassDescription* description_ = nullptr;
  std::shared_ptr<void> instance_;
};

}  // namespace zentaro
