// A reference to an automation object of any class, used through the description of its class.
#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "platform/export.h"

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

  /// The member's id, found without regard to case; raises 438 for an unknown name.
  int memberId(std::string_view name) const;
  /// Reads, assigns or calls a member. `arguments` are converted to the parameters' types, may leave out optional ones at
  /// the end, and are written back where the member takes them by reference. Raises 438 when the member has no such access,
  /// 13 for a wrong argument, and what the member itself raises.
  Variant invoke(int memberId, Access access, std::span<Variant> arguments) const;

  // The three kinds of access by name.
  Variant get(std::string_view name) const;
  void put(std::string_view name, const Variant& value) const;
  Variant call(std::string_view name, std::span<Variant> arguments) const;

 private:
  const ClassDescription* description_ = nullptr;
  std::shared_ptr<void> instance_;
};

}  // namespace zentaro
