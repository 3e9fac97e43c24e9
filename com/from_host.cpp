// The host's values as the library's.
#include <optional>
#include <string>
#include <vector>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "com/instance.h"
#include "com/values.h"

namespace zentaro::com {
namespace {

[[noreturn]] void raise(ErrorNumber number) { throw AutomationError(number); }

Variant ofDecimal(DECIMAL value) {
  CY currency;
  if (SUCCEEDED(::VarCyFromDec(&value, &currency))) return Currency::fromScaled(currency.int64);
  double number = 0;
  if (FAILED(::VarR8FromDec(&value, &number))) raise(ErrorNumber::TypeMismatch);
  return number;
}

Variant ofArray(SAFEARRAY* array) {
  if (array == nullptr) return Array::withoutBounds();
  VARTYPE type = VT_EMPTY;
  LONG low = 0, high = -1;
  const bool isReadable = ::SafeArrayGetDim(array) == 1 && SUCCEEDED(::SafeArrayGetVartype(array, &type)) &&
                          SUCCEEDED(::SafeArrayGetLBound(array, 1, &low)) &&
                          SUCCEEDED(::SafeArrayGetUBound(array, 1, &high));
  if (!isReadable) raise(ErrorNumber::TypeMismatch);
  std::vector<Variant> items;
  for (LONG index = low; index <= high; ++index) {
    OwnedVariant item;
    if (type != VT_VARIANT) item.vt = type;
    void* const place = type == VT_VARIANT ? static_cast<void*>(&item) : &item.llVal;
    if (FAILED(::SafeArrayGetElement(array, &index, place))) {
      item.vt = VT_EMPTY;
      raise(ErrorNumber::TypeMismatch);
    }
    items.push_back(fromHost(item));
  }
  return Array(std::move(items));
}

/// One object deeper: a value of an object may be an object again, and a list may hold itself.
class Deeper {
 public:
  Deeper() {
    if (depth >= 8) raise(ErrorNumber::TypeMismatch);
    ++depth;
  }
  ~Deeper() { --depth; }
  Deeper(const Deeper&) = delete;
  Deeper& operator=(const Deeper&) = delete;

 private:
  static thread_local int depth;
};
thread_local int Deeper::depth = 0;

Variant propertyOf(IDispatch& object, DISPID id) {
  const Deeper deeper;
  OwnedVariant value;
  DISPPARAMS none{};
  if (FAILED(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, nullptr,
                           nullptr)))
    raise(ErrorNumber::TypeMismatch);
  return fromHost(value);
}

DISPID idOf(IDispatch& object, std::wstring name) {
  auto* text = name.data();
  DISPID id = DISPID_UNKNOWN;
  return SUCCEEDED(object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id)) ? id : DISPID_UNKNOWN;
}

/// The elements of an array of JScript's, which is an object with a length and members named by their index;
/// nothing for any other object. An element that there is not is empty.
std::optional<Array> listOf(IDispatch& object) {
  constexpr std::int32_t most = 0x7FFF;  // more than any command takes; a length may be set to billions
  const DISPID length = idOf(object, L"length");
  if (length == DISPID_UNKNOWN || idOf(object, L"push") == DISPID_UNKNOWN) return std::nullopt;
  const std::int32_t count = toInt32(propertyOf(object, length));
  if (count < 0 || count > most) raise(ErrorNumber::Overflow);
  std::vector<Variant> items(static_cast<std::size_t>(count));
  for (std::size_t index = 0; index < items.size(); ++index) {
    const DISPID id = idOf(object, std::to_wstring(index));
    if (id != DISPID_UNKNOWN) items[index] = propertyOf(object, id);
  }
  return Array(std::move(items));
}

Variant ofObject(IUnknown* object) {
  if (object == nullptr) return Object();
  if (const auto own = ownObject(*object)) return *own;
  Reference<IDispatch> dispatch;
  if (FAILED(object->QueryInterface(IID_IDispatch, dispatch.outAny()))) raise(ErrorNumber::TypeMismatch);
  if (auto list = listOf(*dispatch.get())) return std::move(*list);
  return propertyOf(*dispatch.get(), DISPID_VALUE);
}

/// What a reference leads to, as a VARIANT that owns nothing.
VARIANT behind(const VARIANT& reference) {
  VARIANT value;
  ::VariantInit(&value);
  const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
  if (reference.byref == nullptr) return value;
  if (type == VT_VARIANT) return *reference.pvarVal;
  if (type == VT_DECIMAL) {
    value.decVal = *reference.pdecVal;
  } else if ((type & VT_ARRAY) != 0) {
    value.parray = *reference.pparray;
  } else {
    switch (type) {
      case VT_I1:
      case VT_UI1: value.bVal = *reference.pbVal; break;
      case VT_I2:
      case VT_UI2:
      case VT_BOOL: value.iVal = *reference.piVal; break;
      case VT_I4:
      case VT_UI4:
      case VT_R4:
      case VT_INT:
      case VT_UINT:
      case VT_ERROR: value.lVal = *reference.plVal; break;
      case VT_BSTR:
      case VT_DISPATCH:
      case VT_UNKNOWN: value.byref = *static_cast<void**>(reference.byref); break;
      default: value.llVal = *reference.pllVal;
    }
  }
  value.vt = type;
  return value;
}

}  // namespace

Variant fromHost(const VARIANT& value) {
  if ((value.vt & VT_BYREF) != 0) return fromHost(behind(value));
  if ((value.vt & VT_ARRAY) != 0) return ofArray(value.parray);
  switch (value.vt) {
    case VT_EMPTY: return {};
    case VT_NULL: return Variant::null();
    case VT_ERROR:
      if (value.scode == DISP_E_PARAMNOTFOUND) return Variant::missing();
      break;
    case VT_BOOL: return value.boolVal != VARIANT_FALSE;
    case VT_I1: return static_cast<std::int16_t>(value.cVal);
    case VT_UI1: return static_cast<std::int16_t>(value.bVal);
    case VT_I2: return value.iVal;
    case VT_UI2: return std::int32_t{value.uiVal};
    case VT_I4:
    case VT_INT: return static_cast<std::int32_t>(value.lVal);
    case VT_UI4:
    case VT_UINT: return std::int64_t{value.ulVal};
    case VT_I8: return std::int64_t{value.llVal};
    case VT_UI8: return std::uint64_t{value.ullVal};
    case VT_R4: return value.fltVal;
    case VT_R8: return value.dblVal;
    case VT_CY: return Currency::fromScaled(value.cyVal.int64);
    case VT_DATE: return Date{value.date};
    case VT_BSTR: return std::u16string(textOf(value.bstrVal));
    case VT_DECIMAL: return ofDecimal(value.decVal);
    case VT_DISPATCH:
    case VT_UNKNOWN: return ofObject(value.punkVal);
    default: break;
  }
  raise(ErrorNumber::TypeMismatch);
}

}  // namespace zentaro::com
