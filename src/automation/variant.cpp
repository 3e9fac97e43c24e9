// The array of a Variant, and the one error of its accessors.
#include "automation/variant.h"

#include "automation/automation_error.h"

namespace zentaro {

namespace {

using Elements = std::shared_ptr<const std::vector<Variant>>;

/// One for all arrays without elements; it outlives the host's last object.
const Elements& noElements() {
  static const Elements& shared = *new Elements(std::make_shared<const std::vector<Variant>>());
  return shared;
}

}  // namespace

Array::Array() : items_(noElements()) {}

Array::Array(std::initializer_list<Variant> items) : Array(std::vector<Variant>(items)) {}

Array::Array(std::initializer_list<Array> arrays)
    : Array(arrays.size() == 1 ? *arrays.begin()
                               : Array(std::vector<Variant>(arrays.begin(), arrays.end()))) {}

Array::Array(std::vector<Variant> items)
    : items_(std::make_shared<const std::vector<Variant>>(std::move(items))) {}

Array Array::withoutBounds() {
  Array array;
  array.items_ = nullptr;
  return array;
}

const std::vector<Variant>& Array::items() const {
  if (!hasBounds()) throw AutomationError(ErrorNumber::SubscriptOutOfRange);
  return *items_;
}

int Array::upperBound() const { return static_cast<int>(items().size()) - 1; }

const Variant& Array::at(int index) const {
  if (index < 0 || index > upperBound()) throw AutomationError(ErrorNumber::SubscriptOutOfRange);
  return items()[static_cast<std::size_t>(index)];
}

void Variant::raiseTypeMismatch() { throw AutomationError(ErrorNumber::TypeMismatch); }

}  // namespace zentaro
