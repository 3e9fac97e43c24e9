// What a class description is: the members of an automation class in interface order, from which
// late binding, the command line, the line protocol and the reference manual are all read.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "automation/object.h"
#include "automation/variant.h"

namespace zentaro {

enum class ValueType {
  None,
  Variant,
  Boolean,
  Int16,
  Int32,
  Double,
  Currency,
  Date,
  Text,
  Array,
  Object,
  Enumeration
};
enum class Access { Get, Let, Set, Call };
enum class Passing { ByValue, ByReference };

struct Type {
  ValueType kind = ValueType::None;
  std::string_view name = {};  // of a class or an enumeration
};

/// The value of an optional parameter that was left out.
struct Default {
  enum class Kind { None, Missing, Zero, EmptyText, Text, True };
  Kind kind = Kind::None;
  std::string_view text = {};
  Variant value() const;
};

struct Parameter {
  std::string_view name;
  Type type;
  Passing passing = Passing::ByReference;
  Default fallback = {};       // a kind other than None makes the parameter optional
  std::string_view note = {};  // what it means, what may be passed, and how it is sent
  bool isOptional() const { return fallback.kind != Default::Kind::None; }
};

/// A short list as a constant.
template <class Item, std::size_t most>
class ConstantList {
 public:
  constexpr ConstantList() = default;
  constexpr ConstantList(std::initializer_list<Item> items) : size_(items.size()) {
    std::copy(items.begin(), items.end(), items_.begin());
  }

  constexpr std::size_t size() const { return size_; }
  constexpr bool empty() const { return size_ == 0; }
  constexpr const Item& operator[](std::size_t index) const { return items_[index]; }
  constexpr Item& operator[](std::size_t index) { return items_[index]; }
  constexpr const Item* begin() const { return items_.data(); }
  constexpr const Item* end() const { return items_.data() + size_; }

 private:
  std::array<Item, most> items_{};
  std::size_t size_ = 0;
};
using ParameterList = ConstantList<Parameter, 6>;

/// One accessor or method. `arguments` has one element for each parameter and, for a Let or Set,
/// the new value behind them.
using Thunk = Variant (*)(void* instance, std::span<Variant> arguments);

// Which outcome codes a member gives; any of them together.
inline constexpr unsigned noOutcome = 0;
inline constexpr unsigned checksPort = 1;      // -1 while the port is closed
inline constexpr unsigned exchanges = 2;       // 0 to 5, of the exchange with the printer
inline constexpr unsigned checksArgument = 4;  // 6, for an argument that is rejected before anything is sent

struct Member {
  std::string_view name;
  Access access;
  ParameterList parameters;
  Type result;
  std::string_view help;
  Thunk thunk;
  unsigned outcomes = noOutcome;  // which it gives, of those above
  Parameter newValue = {};        // of a Let or Set

  /// The outcome codes that it gives: those of its result where that is one, else those that it leaves
  /// in nEnvironmentError.
  std::vector<int> outcomeCodes() const;
  /// Whether the result is the outcome code; the outcome of any other member is in nEnvironmentError.
  bool returnsOutcome() const {
    return outcomes != noOutcome && (result.kind == ValueType::Int16 || result.kind == ValueType::Variant);
  }
};

struct ClassDescription {
  std::string_view name;           // "CZentaro"
  std::string_view interfaceName;  // "_CZentaro"
  std::string_view help;
  std::span<const Member> members;    // in interface order, the accessors of a property one behind the other
  std::shared_ptr<void> (*create)();  // null when a host cannot create one
};

struct EnumerationValue {
  std::string_view name;
  int value;
  std::string_view help;
};
struct EnumerationDescription {
  std::string_view name, help;
  std::span<const EnumerationValue> values;
};

/// The description of the class T; defined for each class where the interface is described.
template <class T>
const ClassDescription& describe();

}  // namespace zentaro
