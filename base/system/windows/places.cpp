// By the folders that Windows has for such files.
#include "base/system/places.h"

// clang-format off
#include <windows.h>
#include <shlobj.h>
// clang-format on

#include <cstdlib>
#include <stdexcept>

#include "base/terminal/language.h"

namespace zentaro::system {

namespace {

// A service may be started without these variables.
std::filesystem::path systemsFolder(int which) {
  wchar_t path[MAX_PATH];
  if (::SHGetFolderPathW(nullptr, which, nullptr, SHGFP_TYPE_CURRENT, path) == S_OK) return path;
  throw std::runtime_error(terminal::say("la cuenta no tiene carpeta propia: defina LOCALAPPDATA",
                                         "the account has no home: set LOCALAPPDATA"));
}

}  // namespace

std::filesystem::path userStateFolder() {
  const wchar_t* const named = ::_wgetenv(L"LOCALAPPDATA");
  const bool isNamed = named != nullptr && *named != L'\0';
  return (isNamed ? std::filesystem::path(named) : systemsFolder(CSIDL_LOCAL_APPDATA)) / "zentaro";
}

std::filesystem::path machineStateFolder() { return systemsFolder(CSIDL_COMMON_APPDATA) / "zentaro"; }

}  // namespace zentaro::system
