// How a member is described: each row names a C++ member once; its types and its thunk are derived
// from it by template.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "automation/description.h"
#include "printer/closing_type.h"
#include "printer/outcome.h"

namespace zentaro {
class ResultadoCierre;
class statusHASAR;
class statusN;
}  // namespace zentaro

namespace zentaro::table {

// --- C++ types as types of the interface

template <class T>
inline constexpr Type typeFor = {};
template <>
inline constexpr Type typeFor<Variant> = {ValueType::Variant};
template <>
inline constexpr Type typeFor<bool> = {ValueType::Boolean};
template <>
inline constexpr Type typeFor<std::int16_t> = {ValueType::Int16};
template <>
inline constexpr Type typeFor<std::int32_t> = {ValueType::Int32};
template <>
inline constexpr Type typeFor<Currency> = {ValueType::Currency};
template <>
inline constexpr Type typeFor<Date> = {ValueType::Date};
template <>
inline constexpr Type typeFor<std::u16string> = {ValueType::Text};
template <>
inline constexpr Type typeFor<Array> = {ValueType::Array};
template <class Record>
inline constexpr std::string_view recordName = {};
template <>
inline constexpr std::string_view recordName<statusN> = "statusN";
template <>
inline constexpr std::string_view recordName<statusHASAR> = "statusHASAR";
template <>
inline constexpr std::string_view recordName<ResultadoCierre> = "ResultadoCierre";
template <class Record>
inline constexpr Type typeFor<std::unique_ptr<Record>> = {ValueType::Object, recordName<Record>};
template <>
inline constexpr Type typeFor<ENVERR_CODES> = {ValueType::Enumeration, "ENVERR_CODES"};
template <>
inline constexpr Type typeFor<nTipoCierreFiscal> = {ValueType::Enumeration, "nTipoCierreFiscal"};

/// A host's value as the C++ type of a parameter; raises as the conversions do.
template <class T>
decltype(auto) argument(Variant& value) {
  if constexpr (std::is_same_v<T, Variant>) {
    return (value);
  } else if constexpr (std::is_same_v<T, bool>) {
    return toBoolean(value);
  } else if constexpr (std::is_same_v<T, std::int16_t>) {
    return toInt16(value);
  } else if constexpr (std::is_same_v<T, std::int32_t>) {
    return toInt32(value);
  } else if constexpr (std::is_enum_v<T>) {
    return static_cast<T>(toInt32(value));
  } else if constexpr (std::is_same_v<T, Currency>) {
    return toCurrency(value);
  } else if constexpr (std::is_same_v<T, Date>) {
    return toDate(value);
  } else if constexpr (std::is_same_v<T, std::u16string>) {
    return toText(value);
  } else {
    static_assert(std::is_same_v<T, Array>);
    return (value.array());
  }
}

template <class T>
Variant result(T value) {
  if constexpr (std::is_enum_v<T>) {
    return static_cast<std::int32_t>(value);
  } else {
    return Variant(std::move(value));
  }
}
/// A record that is handed out belongs to whoever holds the reference.
template <class T>
Variant result(std::unique_ptr<T> record) {
  return record ? Object(describe<T>(), std::shared_ptr<T>(std::move(record))) : Object{};
}

// --- Parameters

inline constexpr Default omitted{Default::Kind::Missing}, zero{Default::Kind::Zero},
    emptyText{Default::Kind::EmptyText}, isTrue{Default::Kind::True};
constexpr Default text(std::string_view value) { return {Default::Kind::Text, value}; }

constexpr Parameter byRef(std::string_view name, std::string_view note, Default fallback = {}) {
  return {name, {}, Passing::ByReference, fallback, note};
}
constexpr Parameter byValue(std::string_view name, std::string_view note, Default fallback = {}) {
  return {name, {}, Passing::ByValue, fallback, note};
}

// --- What is derived from a member pointer

template <class Class, class Result, class... Arguments>
struct MethodTraits {
  static constexpr std::size_t arity = sizeof...(Arguments);
  static constexpr Type resultType = typeFor<Result>;

  static constexpr ParameterList typed(ParameterList parameters) {
    [[maybe_unused]] std::size_t index = 0;
    ((parameters[index++].type = typeFor<std::remove_cvref_t<Arguments>>), ...);
    return parameters;
  }
  template <auto method, std::size_t... indices>
  static Variant call(Class& object, [[maybe_unused]] std::span<Variant> arguments,
                      std::index_sequence<indices...>) {
    if constexpr (std::is_void_v<Result>) {
      (object.*method)(argument<std::remove_cvref_t<Arguments>>(arguments[indices])...);
      return {};
    } else {
      return result((object.*method)(argument<std::remove_cvref_t<Arguments>>(arguments[indices])...));
    }
  }
  template <auto method>
  static Variant thunk(void* instance, std::span<Variant> arguments) {
    return call<method>(*static_cast<Class*>(instance), arguments, std::index_sequence_for<Arguments...>());
  }
};

template <class Class, class Result, class... Arguments>
MethodTraits<Class, Result, Arguments...> traitsOf(Result (Class::*)(Arguments...));
template <class Class, class Result, class... Arguments>
MethodTraits<Class, Result, Arguments...> traitsOf(Result (Class::*)(Arguments...) const);
template <auto method>
using TraitsOf = decltype(traitsOf(method));

template <class Class, class Value>
struct VariableTraits {
  static constexpr Type type = typeFor<Value>;
  template <Value Class::*variable>
  static Variant read(void* instance, std::span<Variant> /*arguments*/) {
    return result(static_cast<Class*>(instance)->*variable);
  }
  template <Value Class::*variable>
  static Variant assign(void* instance, std::span<Variant> arguments) {
    static_cast<Class*>(instance)->*variable = argument<Value>(arguments[0]);
    return {};
  }
};
template <class Class, class Value>
VariableTraits<Class, Value> variableTraitsOf(Value Class::*);
template <auto variable>
using VariableTraitsOf = decltype(variableTraitsOf(variable));

// --- Rows: each gives the accessors of one member in interface order

template <auto function>
consteval std::array<Member, 1> method(std::string_view name, ParameterList parameters = {},
                                       std::string_view help = {}, unsigned outcomes = noOutcome) {
  using Traits = TraitsOf<function>;
  if (parameters.size() != Traits::arity) throw "every parameter of the C++ member needs a name";
  return {Member{name, Access::Call, Traits::typed(parameters), Traits::resultType, help,
                 &Traits::template thunk<function>, outcomes}};
}

/// A public variable: get and let, and set when it can hold an object.
template <auto member>
consteval auto variable(std::string_view name, std::string_view help = {}) {
  using Traits = VariableTraitsOf<member>;
  const Member get{name, Access::Get, {}, Traits::type, help, &Traits::template read<member>};
  Member let{name, Access::Let, {}, Traits::type, help, &Traits::template assign<member>};
  let.newValue = {"value", Traits::type, Passing::ByValue};
  if constexpr (Traits::type.kind == ValueType::Variant) {
    Member set = let;
    set.access = Access::Set;
    return std::array{get, let, set};
  } else {
    return std::array{get, let};
  }
}

/// A property with code that can only be read.
template <auto getter>
consteval std::array<Member, 1> readOnly(std::string_view name, std::string_view help = {}) {
  using Traits = TraitsOf<getter>;
  return {Member{name, Access::Get, {}, Traits::resultType, help, &Traits::template thunk<getter>}};
}

/// A property with code whose assignment stands first in the interface; `newValue` is what is assigned.
template <auto setter, auto getter>
consteval std::array<Member, 2> letGet(std::string_view name, Parameter newValue,
                                       std::string_view help = {}) {
  using Setter = TraitsOf<setter>;
  newValue = Setter::typed({newValue})[0];
  return {
      Member{
          name, Access::Let, {}, newValue.type, help, &Setter::template thunk<setter>, noOutcome, newValue},
      readOnly<getter>(name, help)[0]};
}

template <std::size_t... sizes>
consteval auto rows(const std::array<Member, sizes>&... groups) {
  std::array<Member, (sizes + ...)> all{};
  std::size_t position = 0;
  const auto append = [&](const auto& group) {
    for (const Member& member : group) all[position++] = member;
  };
  (append(groups), ...);
  return all;
}

}  // namespace zentaro::table
