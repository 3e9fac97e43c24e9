// Registration: the type library, and for each class that a host can create its program id and its
// identifier.
#include "com/registration.h"

#include <string>

#include "automation/description.h"
#include "com/identifiers.h"
#include "com/server.h"
#include "interface/library.h"
#include "text/unicode.h"

// Declared by no header of mingw-w64's, though its library has them.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib*, OLECHAR*, OLECHAR*);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID, WORD, WORD, LCID, SYSKIND);

namespace zentaro::com {
namespace {

constexpr SYSKIND thisSystem = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
constexpr wchar_t classesPath[] = L"Software\\Classes";

HKEY rootOf(Audience audience) {
  return audience == Audience::AllUsers ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

/// The part of the registry where classes stand.
std::wstring classKey(const std::wstring& key) { return std::wstring(classesPath) + L'\\' + key; }

std::wstring textOf(const GUID& id) {
  wchar_t text[40];
  ::StringFromGUID2(id, text, static_cast<int>(std::size(text)));
  return text;
}

struct CreatableClass {
  std::wstring programId, key, help;
};

template <class Use>
HRESULT forEachCreatable(Use use) {
  for (const ClassDescription* description : libraryClasses()) {
    if (description->create == nullptr) continue;
    const auto programId = wide(utf16(std::string(libraryName) + "." + std::string(description->name)));
    const HRESULT result =
        use(CreatableClass{programId, L"CLSID\\" + textOf(identifiersOf(description->name).classId),
                           wide(utf16(description->help))});
    if (FAILED(result)) return result;
  }
  return S_OK;
}

class Writer {
 public:
  explicit Writer(HKEY root) : root_(root) {}

  HRESULT result() const { return result_; }
  Writer& value(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
    if (FAILED(result_)) return *this;
    const LSTATUS status = ::RegSetKeyValueW(root_, classKey(key).c_str(), name, REG_SZ, text.c_str(),
                                             static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    result_ = HRESULT_FROM_WIN32(static_cast<DWORD>(status));
    return *this;
  }

 private:
  HKEY root_;
  HRESULT result_ = S_OK;
};

HRESULT writeClass(HKEY root, const CreatableClass& creatable) {
  const std::wstring classId = creatable.key.substr(creatable.key.find(L'{'));
  return Writer(root)
      .value(creatable.programId, nullptr, creatable.help)
      .value(creatable.programId + L"\\CLSID", nullptr, classId)
      .value(creatable.key, nullptr, creatable.help)
      .value(creatable.key + L"\\InprocServer32", nullptr, serverPath())
      .value(creatable.key + L"\\InprocServer32", L"ThreadingModel", L"Apartment")
      .value(creatable.key + L"\\ProgID", nullptr, creatable.programId)
      .value(creatable.key + L"\\Programmable", nullptr, L"")
      .value(creatable.key + L"\\TypeLib", nullptr, textOf(libraryId))
      .value(creatable.key + L"\\Version", nullptr,
             std::to_wstring(libraryMajor) + L"." + std::to_wstring(libraryMinor))
      .result();
}

HRESULT removeKey(HKEY root, const std::wstring& key) {
  const LSTATUS status = ::RegDeleteTreeW(root, classKey(key).c_str());
  return status == ERROR_FILE_NOT_FOUND ? S_OK : HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

/// Whether the server of the other width has the class: program ids are the same for both.
bool isOfOtherWidth(HKEY root, const std::wstring& key) {
  constexpr REGSAM otherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
  HKEY opened = nullptr;
  if (::RegOpenKeyExW(root, classKey(key).c_str(), 0, KEY_READ | otherView, &opened) != ERROR_SUCCESS)
    return false;
  ::RegCloseKey(opened);
  return true;
}

HRESULT registerTypeLibrary(Audience audience) {
  std::wstring path = serverPath();
  Reference<ITypeLib> library;
  const HRESULT result = ::LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.out());
  if (FAILED(result)) return result;
  return audience == Audience::AllUsers ? ::RegisterTypeLib(library.get(), path.data(), nullptr)
                                        : ::RegisterTypeLibForUser(library.get(), path.data(), nullptr);
}

HRESULT unregisterTypeLibrary(Audience audience) {
  BSTR path = nullptr;
  const HRESULT known = ::QueryPathOfRegTypeLib(libraryId, libraryMajor, libraryMinor, LOCALE_NEUTRAL, &path);
  const Bstr kept(path);
  if (FAILED(known)) return S_OK;
  const auto call = audience == Audience::AllUsers ? ::UnRegisterTypeLib : ::UnRegisterTypeLibForUser;
  const HRESULT result = call(libraryId, libraryMajor, libraryMinor, LOCALE_NEUTRAL, thisSystem);
  return result == TYPE_E_REGISTRYACCESS || result == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND) ? S_OK
                                                                                               : result;
}

}  // namespace

Audience possibleAudience() {
  HKEY key = nullptr;
  const LSTATUS status = ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, classesPath, 0, KEY_WRITE, &key);
  if (status != ERROR_SUCCESS) return Audience::CurrentUser;
  ::RegCloseKey(key);
  return Audience::AllUsers;
}

HRESULT registerServer(Audience audience) {
  const HRESULT result = registerTypeLibrary(audience);
  if (FAILED(result)) return result;
  return forEachCreatable(
      [&](const CreatableClass& creatable) { return writeClass(rootOf(audience), creatable); });
}

HRESULT unregisterServer(Audience audience) {
  const HKEY root = rootOf(audience);
  const HRESULT classes = forEachCreatable([&](const CreatableClass& creatable) {
    const HRESULT result = removeKey(root, creatable.key);
    if (FAILED(result) || isOfOtherWidth(root, creatable.key)) return result;
    return removeKey(root, creatable.programId);
  });
  const HRESULT library = unregisterTypeLibrary(audience);
  return FAILED(classes) ? classes : library;
}

}  // namespace zentaro::com
