// By the folders that Windows has for such files.
#include "base/system/places.h"

#include <cstdlib>
#include <stdexcept>

#include "base/terminal/language.h"

namespace zentaro::system {

namespace {

std::filesystem::path folderIn(const wchar_t* variable) {
  const wchar_t* const folder = ::_wgetenv(variable);
  if (folder != nullptr && *folder != L'\0') return std::filesystem::path(folder) / "zentaro";
  throw std::runtime_error(std::string(terminal::say("la cuenta no tiene carpeta propia: defina LOCALAPPDATA",
                                                     "the account has no home: set LOCALAPPDATA")));
}

}  // namespace

std::filesystem::path userStateFolder() { return folderIn(L"LOCALAPPDATA"); }

std::filesystem::path machineStateFolder() { return folderIn(L"ProgramData"); }

}  // namespace zentaro::system
