// A program that creates the printer object by its name, wherever the system finds the class; prints the port number
// that it set. Ends with 42 when all went well.
#include "com/system.h"

int wmain() {
  using namespace zentaro::com;
  ::CoInitialize(nullptr);
  CLSID classId{};
  Reference<IDispatch> object;
  if (FAILED(::CLSIDFromProgID(L"Zentaro.CZentaro", &classId))) return 1;
  if (FAILED(::CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.outAny())))
    return 2;
  auto* name = const_cast<wchar_t*>(L"PrinterType");
  DISPID id = DISPID_UNKNOWN;
  DISPPARAMS none{};
  OwnedVariant type;
  if (FAILED(object->GetIDsOfNames(IID_NULL, &name, 1, 0, &id))) return 3;
  if (FAILED(object->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &type, nullptr, nullptr))) return 4;
  return textOf(type.bstrVal) == u"EPSON TMU" ? 42 : 5;
}
