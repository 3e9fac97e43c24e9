// The library's values as the host's, and back into the host's own variables.
#include <cstring>

#include "automation/automation_error.h"
#include "com/instance.h"
#include "com/values.h"

namespace zentaro::com {
namespace {

using Kind = Variant::Kind;

SAFEARRAY* safeArray(const Array& array) {
  if (!array.hasBounds()) return nullptr;
  const auto& items = array.items();
  SAFEARRAY* const made = ::SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(items.size()));
  if (made == nullptr) throw std::bad_alloc();
  try {
    auto* elements = static_cast<VARIANT*>(made->pvData);
    for (const Variant& item : items) toHost(item, *elements++);
  } catch (...) {
    ::SafeArrayDestroy(made);
    throw;
  }
  return made;
}

/// Bytes of a value of the type inside a VARIANT.
std::size_t sizeOf(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1: return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL: return 2;
    case VT_I4:
    case VT_UI4:
    case VT_R4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR: return 4;
    default: return 8;
  }
}

void replace(BSTR& text, VARIANT& value) {
  ::SysFreeString(std::exchange(text, std::exchange(value.bstrVal, nullptr)));
}

}  // namespace

void toHost(const Variant& value, VARIANT& result) {
  ::VariantInit(&result);
  const auto hold = [&](VARTYPE type, auto& member, auto given) {
    member = given;
    result.vt = type;
  };
  switch (value.kind()) {
    case Kind::Empty: return;
    case Kind::Null: result.vt = VT_NULL; return;
    case Kind::Missing: return hold(VT_ERROR, result.scode, DISP_E_PARAMNOTFOUND);
    case Kind::Boolean: return hold(VT_BOOL, result.boolVal, value.boolean() ? VARIANT_TRUE : VARIANT_FALSE);
    case Kind::Int16: return hold(VT_I2, result.iVal, value.int16());
    case Kind::Int32: return hold(VT_I4, result.lVal, value.int32());
    case Kind::Double: return hold(VT_R8, result.dblVal, value.number());
    case Kind::Single: return hold(VT_R4, result.fltVal, value.single());
    case Kind::Currency: return hold(VT_CY, result.cyVal.int64, value.currency().scaled());
    case Kind::Date: return hold(VT_DATE, result.date, value.date().days);
    case Kind::Text: return hold(VT_BSTR, result.bstrVal, makeBstr(value.text()));
    case Kind::Array: return hold(VT_ARRAY | VT_VARIANT, result.parray, safeArray(value.array()));
    case Kind::Object: return hold(VT_DISPATCH, result.pdispVal, hostObject(value.object()));
  }
}

void writeBack(const Variant& value, VARIANT& argument) {
  const auto type = static_cast<VARTYPE>(argument.vt & ~VT_BYREF);
  if ((argument.vt & VT_BYREF) == 0 || argument.byref == nullptr) return;
  OwnedVariant changed;
  toHost(value, changed);
  if (type == VT_VARIANT) {
    VARIANT& variable = *argument.pvarVal;
    if ((variable.vt & VT_BYREF) != 0) return writeBack(value, variable);
    std::swap(variable, static_cast<VARIANT&>(changed));  // what it held goes with `changed`
    return;
  }
  const HRESULT result = ::VariantChangeTypeEx(&changed, &changed, LOCALE_USER_DEFAULT, 0, type);
  if (FAILED(result)) {
    throw AutomationError(result == DISP_E_OVERFLOW ? ErrorNumber::Overflow : ErrorNumber::TypeMismatch);
  }
  if (type == VT_BSTR) return replace(*argument.pbstrVal, changed);
  if (type == VT_DECIMAL) {
    *argument.pdecVal = changed.decVal;
    return;
  }
  std::memcpy(argument.byref, &changed.llVal, sizeOf(type));
}

bool isSame(const Variant& left, const Variant& right) {
  if (left.kind() != right.kind()) return false;
  switch (left.kind()) {
    case Kind::Boolean: return left.boolean() == right.boolean();
    case Kind::Int16: return left.int16() == right.int16();
    case Kind::Int32: return left.int32() == right.int32();
    case Kind::Double: return left.number() == right.number();
    case Kind::Single: return left.single() == right.single();
    case Kind::Currency: return left.currency() == right.currency();
    case Kind::Date: return left.date() == right.date();
    case Kind::Text: return left.text() == right.text();
    case Kind::Empty:
    case Kind::Null:
    case Kind::Missing:
    case Kind::Array:
    case Kind::Object: break;
  }
  return true;
}

}  // namespace zentaro::com
