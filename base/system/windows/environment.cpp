// As the system tells it in wide texts.
#include "base/system/environment.h"

// clang-format off
#include <windows.h>
#include <shlobj.h>
// clang-format on

#include "base/terminal/windows/text.h"

namespace zentaro::system {

std::string variable(const char* name) {
  const wchar_t* const value = ::_wgetenv(terminal::wide(name).c_str());
  return value == nullptr ? "" : terminal::narrow(value);
}

std::string accountText() {
  return variable("USERNAME") + (::IsUserAnAdmin() != 0 ? ": administrator" : ":");
}

// Required: this call. The other ones name the version that the program was made for.
std::string systemText() {
  using GetVersion = LONG(WINAPI*)(OSVERSIONINFOW*);
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  const auto getVersion = reinterpret_cast<GetVersion>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll"), "RtlGetVersion")));
  if (getVersion != nullptr) getVersion(&version);
  return "Windows " + std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) +
         "." + std::to_string(version.dwBuildNumber) + ", " + variable("PROCESSOR_ARCHITECTURE") +
         (sizeof(void*) == 4 ? ", 32 bit" : ", 64 bit");
}

}  // namespace zentaro::system
