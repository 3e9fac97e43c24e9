// The types of the interface as the system's automation types.
#pragma once

#include "automation/description.h"
#include "com/system.h"

namespace zentaro::com {

template <class T, VARTYPE type>
struct Hosted {
  using Value = T;
  static constexpr VARTYPE variantType = type;
};

/// How a value of a type travels.
template <ValueType kind>
struct HostType;
template <>
struct HostType<ValueType::Variant> : Hosted<VARIANT, VT_VARIANT> {};
template <>
struct HostType<ValueType::Boolean> : Hosted<VARIANT_BOOL, VT_BOOL> {};
template <>
struct HostType<ValueType::Int16> : Hosted<SHORT, VT_I2> {};
template <>
struct HostType<ValueType::Int32> : Hosted<LONG, VT_I4> {};
template <>
struct HostType<ValueType::Double> : Hosted<DOUBLE, VT_R8> {};
template <>
struct HostType<ValueType::Currency> : Hosted<CY, VT_CY> {};
template <>
struct HostType<ValueType::Date> : Hosted<DATE, VT_DATE> {};
template <>
struct HostType<ValueType::Text> : Hosted<BSTR, VT_BSTR> {};
template <>
struct HostType<ValueType::Array> : Hosted<SAFEARRAY*, VT_ARRAY | VT_VARIANT> {};
template <>
struct HostType<ValueType::Object> : Hosted<IDispatch*, VT_DISPATCH> {};
template <>
struct HostType<ValueType::Enumeration> : Hosted<LONG, VT_I4> {};

}  // namespace zentaro::com
