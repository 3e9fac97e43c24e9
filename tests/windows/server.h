// The server under test, loaded as a host's runtime loads it, and calls by name and through slots.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "com/identifiers.h"
#include "com/system.h"

namespace zentaro::com::testing {

/// The DLL, loaded while it lives.
class Server {
 public:
  Server() : module_(::LoadLibraryW(LR"(Zentaro.dll)")) { EXPECT_NE(module_, nullptr); }
  ~Server() { ::FreeLibrary(module_); }

  HMODULE module() const { return module_; }
  HRESULT call(const char* name) const { return entry<HRESULT(STDMETHODCALLTYPE*)()>(name)(); }
  HRESULT factoryOf(REFCLSID classId, Reference<IClassFactory>& factory) const {
    using GetClassObject = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);
    return entry<GetClassObject>("DllGetClassObject")(classId, IID_IClassFactory, factory.outAny());
  }
  HRESULT create(REFCLSID classId, Reference<IDispatch>& object) const {
    Reference<IClassFactory> factory;
    const HRESULT result = factoryOf(classId, factory);
    return FAILED(result) ? result : factory->CreateInstance(nullptr, IID_IDispatch, object.outAny());
  }
  Reference<IDispatch> create(const char* className) const {
    Reference<IDispatch> object;
    EXPECT_EQ(create(identifiersOf(className).classId, object), S_OK);
    return object;
  }

 private:
  template <class Function>
  Function entry(const char* name) const {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(module_, name)));
  }
  HMODULE module_;
};

inline DISPID idOf(IDispatch& object, const wchar_t* name) {
  auto* text = const_cast<wchar_t*>(name);
  DISPID id = DISPID_UNKNOWN;
  EXPECT_EQ(object.GetIDsOfNames(IID_NULL, &text, 1, 0, &id), S_OK);
  return id;
}

inline VARIANT number(short value) {
  VARIANT made;
  made.vt = VT_I2;
  made.iVal = value;
  return made;
}
inline VARIANT text(const wchar_t* value) {
  VARIANT made;
  made.vt = VT_BSTR;
  made.bstrVal = ::SysAllocString(value);
  return made;
}
template <class T>
VARIANT reference(VARTYPE type, T& variable) {
  VARIANT made;
  made.vt = type | VT_BYREF;
  made.byref = &variable;
  return made;
}

}  // namespace zentaro::com::testing
