// The server as its hosts use it, with the system's own runtime on the other side; no printer is needed.
#include "com/server.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <thread>

#include "com/registration.h"
#include "windows/server.h"

namespace zentaro::com::testing {
namespace {

class ServerTest : public ::testing::Test {
 protected:
  Server server;
  Reference<IDispatch> z = server.create("CZentaro");

  ServerTest() { ::CoInitialize(nullptr); }
  ~ServerTest() override {
    z = {};
    ::CoUninitialize();
  }

  /// A call by dispatch id; the arguments stand in the order of the parameters.
  HRESULT invoke(const wchar_t* name, WORD flags, std::vector<VARIANT> arguments, VARIANT* result = nullptr,
                 EXCEPINFO* error = nullptr, std::vector<DISPID> named = {}) {
    std::reverse(arguments.begin(), arguments.end());
    if ((flags & DISPATCH_PROPERTYPUT) != 0) named = {DISPID_PROPERTYPUT};
    DISPPARAMS given{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                     static_cast<UINT>(named.size())};
    return z->Invoke(idOf(*z.get(), name), IID_NULL, LOCALE_USER_DEFAULT, flags, &given, result, error,
                     nullptr);
  }
  std::u16string frameOf(VARIANT field) {
    SAFEARRAY* const array = ::SafeArrayCreateVector(VT_VARIANT, 0, 1);
    LONG first = 0;
    ::SafeArrayPutElement(array, &first, &field);
    OwnedVariant fields, frame;
    fields.vt = VT_ARRAY | VT_VARIANT;
    fields.parray = array;
    const HRESULT result = invoke(L"BuildOMB", DISPATCH_METHOD, {number(0x48), fields}, &frame);
    if (FAILED(result)) return u"failed";
    const std::u16string text(textOf(frame.bstrVal));
    return text.substr(4, text.find(u'\x03') - 4);  // behind STX, sequence, command and FS
  }
  /// The function in the slot that the type library names, as a compiler calls it.
  template <class... Arguments>
  HRESULT slot(IDispatch* object, const wchar_t* name, INVOKEKIND kind, Arguments... arguments) {
    Reference<ITypeInfo> dispatch, dual;
    HREFTYPE reference = 0;
    EXPECT_EQ(object->GetTypeInfo(0, LOCALE_NEUTRAL, dispatch.out()), S_OK);
    EXPECT_EQ(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
    EXPECT_EQ(dispatch->GetRefTypeInfo(reference, dual.out()), S_OK);
    const MEMBERID id = idOf(*object, name);
    for (UINT index = 0;; ++index) {
      FUNCDESC* function = nullptr;
      if (FAILED(dual->GetFuncDesc(index, &function))) return E_NOTIMPL;
      const bool found = function->memid == id && function->invkind == kind;
      const auto place = static_cast<std::size_t>(function->oVft) / sizeof(void*);
      dual->ReleaseFuncDesc(function);
      using Function = HRESULT(STDMETHODCALLTYPE*)(IDispatch*, Arguments...);
      if (found) return (*reinterpret_cast<Function**>(object))[place](object, arguments...);
    }
  }
};

TEST_F(ServerTest, ValuesOfEveryTypeOfAHostAreUnderstood) {
  VARIANT value{};
  const auto of = [&value](VARTYPE type, auto set) {
    value = {};
    set();
    value.vt = type;
    return value;
  };
  EXPECT_EQ(frameOf(of(VT_UI1, [&] { value.bVal = 200; })), u"200");
  EXPECT_EQ(frameOf(of(VT_I1, [&] { value.cVal = -3; })), u"-3");
  EXPECT_EQ(frameOf(of(VT_UI2, [&] { value.uiVal = 65535; })), u"65535");
  EXPECT_EQ(frameOf(of(VT_UI4, [&] { value.ulVal = 4000000000U; })), u"4000000000");
  EXPECT_EQ(frameOf(of(VT_I8, [&] { value.llVal = -5; })), u"-5");
  EXPECT_EQ(frameOf(of(VT_R4, [&] { value.fltVal = 0.1F; })), u"0.1");
  EXPECT_EQ(frameOf(of(VT_CY, [&] { value.cyVal.int64 = 125000; })), u"12.5");
  EXPECT_EQ(frameOf(of(VT_BOOL, [&] { value.boolVal = VARIANT_TRUE; })), u"True");
  EXPECT_EQ(frameOf(of(VT_BSTR, [&] { value.bstrVal = nullptr; })), u"\x7F") << "as an empty field is sent";
  EXPECT_EQ(frameOf(of(VT_NULL, [] {})), u"failed");
  EXPECT_EQ(frameOf(of(VT_DISPATCH,
                       [&] {
                         z->AddRef();
                         value.pdispVal = z.get();
                       })),
            u"failed")
      << "an object of the library has no value";
  DECIMAL decimal{};
  decimal.Lo64 = 123456;
  decimal.scale = 4;
  EXPECT_EQ(frameOf(reference(VT_DECIMAL, decimal)), u"12.3456");
  float single = 2.5F;
  EXPECT_EQ(frameOf(reference(VT_R4, single)), u"2.5");
  const std::array<double, 2> numbers = {0.5, 7};
  SAFEARRAY* typed = ::SafeArrayCreateVector(VT_R8, 5, 2);
  std::memcpy(typed->pvData, numbers.data(), sizeof numbers);
  OwnedVariant frame;
  ASSERT_EQ(invoke(L"BuildOMB", DISPATCH_METHOD, {number(0x48), reference(VT_ARRAY | VT_R8, typed)}, &frame),
            S_OK);
  EXPECT_NE(textOf(frame.bstrVal)
                .find(u"\x1C"
                      u"0.5\x1C"
                      u"7\x03"),
            std::u16string_view::npos);
  ::SafeArrayDestroy(typed);
}

TEST_F(ServerTest, ArgumentsMayBeNamedAndLeftOut) {
  EXPECT_EQ(invoke(L"IniciarDevolucion", DISPATCH_METHOD, {number(5)}, nullptr, nullptr, {3}), S_OK);
  EXPECT_EQ(invoke(L"IniciarDevolucion", DISPATCH_METHOD, {number(5)}, nullptr, nullptr, {6}),
            DISP_E_PARAMNOTFOUND);
  EXPECT_EQ(invoke(L"PagoConMedio", DISPATCH_METHOD, {number(5)}, nullptr, nullptr, {1}),
            DISP_E_PARAMNOTOPTIONAL);
  // "cliente" by place and by name, then a name that is none: the index is that in the host's array.
  std::array<VARIANT, 2> twice{number(5), number(6)};
  for (DISPID name : {DISPID{0}, DISPID{9}}) {
    DISPPARAMS given{twice.data(), &name, 2, 1};
    UINT wrong = 99;
    EXPECT_EQ(z->Invoke(idOf(*z.get(), L"IniciarFactura"), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                        &given, nullptr, nullptr, &wrong),
              DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(wrong, 0U);
  }
  std::array<VARIANT, 2> strange{number(5), number(6)};
  strange[1].vt = VT_RECORD;
  strange[1].pvRecord = nullptr;
  DISPPARAMS given{strange.data(), nullptr, 2, 0};
  UINT wrong = 99;
  EXPECT_EQ(z->Invoke(idOf(*z.get(), L"IniciarFactura"), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                      &given, nullptr, nullptr, &wrong),
            DISP_E_EXCEPTION);
  EXPECT_EQ(wrong, 1U);
  std::array<LPOLESTR, 3> names{const_cast<wchar_t*>(L"pagoconmedio"), const_cast<wchar_t*>(L"MONTO"),
                                const_cast<wchar_t*>(L"none")};
  std::array<DISPID, 3> ids{};
  EXPECT_EQ(z->GetIDsOfNames(IID_NULL, names.data(), 3, 0, ids.data()), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids[1], 1);
  EXPECT_EQ(ids[2], DISPID_UNKNOWN);
}

TEST_F(ServerTest, WritesBackIntoTheHostsOwnTypesAndPumpsWhileItWaits) {
  // One second of time-out on a port that is not open, with a timer of the host's running.
  const wchar_t key[] = LR"(Software\VB and VBA Program Settings\TRV\Config\EPSONZT)";
  ::RegSetKeyValueW(HKEY_CURRENT_USER, key, L"TimeOutZT", REG_SZ, L"1", 4);
  ASSERT_EQ(invoke(L"CommPort", DISPATCH_PROPERTYPUT, {number(7)}), S_OK);
  static int ticks;
  ticks = 0;
  const auto timer = ::SetTimer(nullptr, 0, 20, [](HWND, UINT, UINT_PTR, DWORD) { ++ticks; });
  BSTR type = ::SysAllocString(L"T");
  OwnedVariant result;
  ASSERT_EQ(
      invoke(L"CerrarComprobanteIGTF", DISPATCH_METHOD, {reference(VT_BSTR, type), number(10)}, &result),
      S_OK);
  ::KillTimer(nullptr, timer);
  EXPECT_EQ(result.vt, VT_I4);
  EXPECT_EQ(result.lVal, 1);
  EXPECT_EQ(textOf(type), u"U");
  EXPECT_GE(ticks, 3);
  ::SysFreeString(type);
  ::PostQuitMessage(7);
  VARIANT kind{};
  VARIANT given = text(L"U");
  kind = reference(VT_VARIANT, given);
  ASSERT_EQ(invoke(L"CerrarComprobanteIGTF", DISPATCH_METHOD, {kind}), S_OK);
  EXPECT_EQ(textOf(given.bstrVal), u"T");
  ::VariantClear(&given);
  MSG message{};
  EXPECT_EQ(::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE), 1);
  EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT)) << "the host's own loop must still end";
  ::RegDeleteKeyValueW(HKEY_CURRENT_USER, key, L"TimeOutZT");

  // An item line whose tax is no number raises, and has folded the quantity into the price all the same.
  ::RegSetKeyValueW(HKEY_CURRENT_USER, key, L"SuprimirDecimalesEZT", REG_SZ, L"1", 4);
  double price = 10, quantity = 2.5;
  VARIANT inner = reference(VT_R8, price);
  ASSERT_EQ(invoke(L"isPortOpen", DISPATCH_PROPERTYPUT, {number(-1)}), S_OK);
  EXPECT_EQ(invoke(L"PasarLineaFactura", DISPATCH_METHOD,
                   {number(0), reference(VT_VARIANT, inner), reference(VT_R8, quantity), text(L"x")}),
            DISP_E_EXCEPTION);
  EXPECT_EQ(price, 25);
  EXPECT_EQ(quantity, 1);
  ::RegDeleteKeyValueW(HKEY_CURRENT_USER, key, L"SuprimirDecimalesEZT");
}

TEST_F(ServerTest, FailuresReachEveryKindOfHost) {
  EXCEPINFO error{};
  EXPECT_EQ(invoke(L"CommPort", DISPATCH_PROPERTYPUT, {number(8)}), S_OK);
  VARIANT yes{};
  yes.vt = VT_BOOL;
  yes.boolVal = VARIANT_TRUE;
  EXPECT_EQ(invoke(L"PortOpen", DISPATCH_PROPERTYPUT, {yes}, nullptr, &error), DISP_E_EXCEPTION);
  EXPECT_EQ(static_cast<unsigned>(error.scode), 0x800A9C41U);
  EXPECT_EQ(textOf(error.bstrSource), u"CZentaro.Let PortOpen");
  EXPECT_EQ(textOf(error.bstrDescription).substr(0, 34), u"Error (2): CommOpen (CreateFile) -");
  ::SysFreeString(error.bstrSource);
  ::SysFreeString(error.bstrDescription);

  VARIANT_BOOL no = VARIANT_FALSE, open = VARIANT_TRUE;
  EXPECT_EQ(slot(z.get(), L"PortOpen", INVOKE_PROPERTYPUT, &no), S_OK);
  EXPECT_EQ(static_cast<unsigned>(slot(z.get(), L"PortOpen", INVOKE_PROPERTYPUT, &open)), 0x800A9C41U);
  Reference<IErrorInfo> kept;
  ASSERT_EQ(::GetErrorInfo(0, kept.out()), S_OK);
  BSTR source = nullptr;
  kept->GetSource(&source);
  EXPECT_EQ(textOf(source), u"CZentaro.Let PortOpen");
  ::SysFreeString(source);
}

TEST_F(ServerTest, AnEarlyBoundClientFindsEveryTypeInItsSlot) {
  VARIANT_BOOL flag = VARIANT_FALSE;
  EXPECT_EQ(slot(z.get(), L"verifyCheckSum", INVOKE_PROPERTYPUT, VARIANT_BOOL{VARIANT_TRUE}), S_OK);
  EXPECT_EQ(slot(z.get(), L"verifyCheckSum", INVOKE_PROPERTYGET, &flag), S_OK);
  EXPECT_EQ(flag, VARIANT_TRUE);
  BSTR type = nullptr;
  EXPECT_EQ(slot(z.get(), L"PrinterType", INVOKE_PROPERTYGET, &type), S_OK);
  EXPECT_EQ(textOf(type), u"EPSON TMU");
  ::SysFreeString(type);

  short command = 0x38, outcome = 0;
  VARIANT empty{};
  SAFEARRAY* fields = ::SafeArrayCreateVector(VT_VARIANT, 0, 0);
  EXPECT_EQ(slot(z.get(), L"BuildOMB", INVOKE_FUNC, &command, &fields, &type), S_OK);
  EXPECT_EQ(textOf(type).substr(0, 4), u"\x02\"8\x03");
  ::SysFreeString(type);
  ::SafeArrayDestroy(fields);
  EXPECT_EQ(slot(z.get(), L"nLastCommand", INVOKE_PROPERTYGET, &command), S_OK);
  EXPECT_EQ(command, 0x38);
  // Whole VARIANTs by value, six of them.
  EXPECT_EQ(
      slot(z.get(), L"IniciarDevolucion", INVOKE_FUNC, empty, empty, empty, empty, empty, empty, &outcome),
      S_OK);
  EXPECT_EQ(outcome, -1);
  EXPECT_EQ(slot(z.get(), L"RealizarCierre", INVOKE_FUNC, LONG{0}, empty, &outcome), S_OK);
  EXPECT_EQ(outcome, -1);
  IDispatch* none = z.get();
  EXPECT_EQ(slot(z.get(), L"GetResultadoCierre", INVOKE_FUNC, &none), S_OK);
  EXPECT_EQ(none, nullptr);

  const auto record = server.create("statusHASAR");
  LONG number = 0;
  EXPECT_EQ(slot(record.get(), L"numeroUltimoDNF", INVOKE_PROPERTYPUT, LONG{123456}), S_OK);
  EXPECT_EQ(slot(record.get(), L"numeroUltimoDNF", INVOKE_PROPERTYGET, &number), S_OK);
  EXPECT_EQ(number, 123456);
}

TEST_F(ServerTest, StaysLoadedAsLongAsItIsNeeded) {
  EXPECT_EQ(server.call("DllCanUnloadNow"), S_FALSE);
  z = {};
  EXPECT_EQ(server.call("DllCanUnloadNow"), S_OK);
  for (const BOOL lock : {TRUE, FALSE}) {
    Reference<IClassFactory> factory;
    ASSERT_EQ(server.factoryOf(identifiersOf("CZentaro").classId, factory), S_OK);
    factory->LockServer(lock);
    factory = {};
    EXPECT_EQ(server.call("DllCanUnloadNow"), lock != FALSE ? S_FALSE : S_OK) << "also without any object";
  }
  Reference<IDispatch> none;
  EXPECT_EQ(server.create(identifiersOf("statusN").classId, none), CLASS_E_CLASSNOTAVAILABLE);
}

TEST(Unloading, IsCleanAlsoWithThreadsThatLiveOn) {
  for (int cycle = 0; cycle < 50; ++cycle) {
    const Server server;
    const auto object = server.create("CZentaro");
    std::thread([&] { EXPECT_TRUE(server.create("CZentaro")); }).join();
  }
}

/// Whether anything of the server's is registered below that root.
bool isRegistered(HKEY root) {
  const auto exists = [root](const std::wstring& key) {
    HKEY opened = nullptr;
    const bool found =
        ::RegOpenKeyExW(root, (L"Software\\Classes\\" + key).c_str(), 0, KEY_READ, &opened) == 0;
    if (found) ::RegCloseKey(opened);
    return found;
  };
  const auto withId = [&](const wchar_t* folder, const GUID& id) {
    wchar_t text[40];
    ::StringFromGUID2(id, text, 40);
    return exists(std::wstring(folder) + L'\\' + text);
  };
  bool found = exists(L"Zentaro.CZentaro") || exists(L"Zentaro.statusHASAR") || withId(L"TypeLib", libraryId);
  for (const ClassIdentifiers& known : classIdentifiers)
    found = found || withId(L"CLSID", known.classId) || withId(L"Interface", known.interfaceId);
  return found;
}

TEST(Registration, LeavesNothingBehindForEverybodyAndForOneUser) {
  ::CoInitialize(nullptr);
  const Server server;
  setServerModule(server.module());
  server.call("DllUnregisterServer");
  EXPECT_FALSE(isRegistered(HKEY_LOCAL_MACHINE) || isRegistered(HKEY_CURRENT_USER));
  EXPECT_EQ(registerServer(Audience::CurrentUser), S_OK);
  EXPECT_TRUE(isRegistered(HKEY_CURRENT_USER));
  EXPECT_EQ(server.call("DllUnregisterServer"), S_OK);
  EXPECT_FALSE(isRegistered(HKEY_LOCAL_MACHINE) || isRegistered(HKEY_CURRENT_USER));
  EXPECT_EQ(server.call("DllUnregisterServer"), S_OK) << "once more";

  // The server of the other width is registered, too: the program id is also its own.
  const std::wstring other = L"Software\\Classes\\CLSID\\{248136D7-53E7-48D7-94A6-06CCA0A62743}";
  HKEY key = nullptr;
  ASSERT_EQ(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, other.c_str(), 0, nullptr, 0, KEY_WRITE | KEY_WOW64_32KEY,
                              nullptr, &key, nullptr),
            ERROR_SUCCESS);
  ::RegCloseKey(key);
  EXPECT_EQ(server.call("DllRegisterServer"), S_OK);
  EXPECT_EQ(server.call("DllUnregisterServer"), S_OK);
  CLSID left{};
  EXPECT_EQ(::CLSIDFromProgID(L"Zentaro.CZentaro", &left), S_OK);
  EXPECT_NE(::CLSIDFromProgID(L"Zentaro.statusHASAR", &left), S_OK);
  ::RegDeleteKeyExW(HKEY_LOCAL_MACHINE, other.c_str(), KEY_WOW64_32KEY, 0);

  EXPECT_EQ(server.call("DllRegisterServer"), S_OK);
  CLSID classId{};
  Reference<IUnknown> object;
  EXPECT_EQ(::CLSIDFromProgID(L"Zentaro.CZentaro", &classId), S_OK);
  EXPECT_EQ(::CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.outAny()), S_OK);
  object = {};
  ::CoUninitialize();
}

}  // namespace
}  // namespace zentaro::com::testing
