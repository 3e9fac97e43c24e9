// The functions of a dual interface behind those of IDispatch, one for each row of a member table, with the
// types that a compiler on the other side derives from the type library.
#pragma once

#include <array>
#include <cstring>
#include <type_traits>

#include "com/call.h"
#include "com/host_types.h"

namespace zentaro::com {

/// A parameter of a row; behind the last one stands the new value of an assignment.
template <const auto& members, std::size_t row>
constexpr const Parameter& parameterAt(std::size_t position) {
  const auto& member = members[row];
  return position < member.parameters.size() ? member.parameters[position] : member.newValue;
}
template <const auto& members, std::size_t row, std::size_t position>
using ValueAt = typename HostType<parameterAt<members, row>(position).type.kind>::Value;
template <const auto& members, std::size_t row, std::size_t position>
inline constexpr bool isByReference = parameterAt<members, row>(position).passing == Passing::ByReference;
template <const auto& members, std::size_t row, std::size_t position>
using Passed = std::conditional_t<isByReference<members, row, position>, ValueAt<members, row, position>*,
                                  ValueAt<members, row, position>>;

/// An argument as a VARIANT that owns nothing.
template <const auto& members, std::size_t row, std::size_t position>
VARIANT argumentAt(Passed<members, row, position> given) {
  constexpr VARTYPE type = HostType<parameterAt<members, row>(position).type.kind>::variantType;
  VARIANT argument;
  ::VariantInit(&argument);
  if constexpr (isByReference<members, row, position>) {
    argument.vt = type | VT_BYREF;
    argument.byref = given;
  } else if constexpr (type == VT_VARIANT) {
    argument = given;
  } else {
    argument.vt = type;
    std::memcpy(&argument.llVal, &given, sizeof given);
  }
  return argument;
}

template <const auto& members, std::size_t row, std::size_t... positions>
struct SlotFunctions {
  static HRESULT STDMETHODCALLTYPE call(Face* self, Passed<members, row, positions>... given) {
    // One more than needed, since there may be none.
    VARIANT arguments[] = {argumentAt<members, row, positions>(given)..., VARIANT{}};
    return callSlot(*self, row, std::span(arguments).first(sizeof...(positions)), nullptr);
  }

  template <class Result>
  static HRESULT STDMETHODCALLTYPE callForResult(Face* self, Passed<members, row, positions>... given,
                                                 Result* result) {
    if (result == nullptr) return E_POINTER;
    *result = Result{};
    VARIANT arguments[] = {argumentAt<members, row, positions>(given)..., VARIANT{}};
    VARIANT value;  // what it owns becomes the caller's
    ::VariantInit(&value);
    const HRESULT code = callSlot(*self, row, std::span(arguments).first(sizeof...(positions)), &value);
    if (FAILED(code)) return code;
    if constexpr (std::is_same_v<Result, VARIANT>) {
      *result = value;
    } else {
      std::memcpy(result, &value.llVal, sizeof *result);
    }
    return code;
  }
};

template <const auto& members, std::size_t row, std::size_t... positions>
Slot slotOf(std::index_sequence<positions...>) {
  using Functions = SlotFunctions<members, row, positions...>;
  constexpr Access access = members[row].access;
  constexpr ValueType kind = members[row].result.kind;
  if constexpr (access == Access::Let || access == Access::Set || kind == ValueType::None) {
    return reinterpret_cast<Slot>(&Functions::call);
  } else {
    return reinterpret_cast<Slot>(&Functions::template callForResult<typename HostType<kind>::Value>);
  }
}

template <const auto& members, std::size_t row>
Slot slotOf() {
  constexpr bool isAssignment = members[row].access == Access::Let || members[row].access == Access::Set;
  return slotOf<members, row>(
      std::make_index_sequence<members[row].parameters.size() + (isAssignment ? 1 : 0)>());
}

template <const auto& members, std::size_t... rows>
auto tableOf(std::index_sequence<rows...>) {
  std::array<Slot, std::size(dispatchSlots) + sizeof...(rows)> table{};
  std::copy(std::begin(dispatchSlots), std::end(dispatchSlots), table.begin());
  ((table[std::size(dispatchSlots) + rows] = slotOf<members, rows>()), ...);
  return table;
}

/// The whole interface of a class, by its member table.
template <const auto& members>
const Slot* interfaceTable() {
  static const auto table = tableOf<members>(std::make_index_sequence<members.size()>());
  return table.data();
}

}  // namespace zentaro::com
