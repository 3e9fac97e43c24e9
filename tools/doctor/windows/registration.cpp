// The classes in the registry: for programs of either width, for everybody or for this user alone.
// clang-format off
#include <windows.h>
#include <shlobj.h>
// clang-format on

#include <optional>

#include "base/terminal/language.h"
#include "base/terminal/windows/text.h"
#include "tools/doctor/settings_facts.h"

namespace zentaro::tools {

namespace {

using terminal::say;

std::optional<std::wstring> textAt(HKEY hive, const std::wstring& path, REGSAM view) {
  HKEY key = nullptr;
  if (::RegOpenKeyExW(hive, path.c_str(), 0, KEY_READ | view, &key) != ERROR_SUCCESS) return std::nullopt;
  wchar_t text[1024] = {};
  DWORD size = sizeof text - sizeof(wchar_t);
  const bool isThere = ::RegQueryValueExW(key, nullptr, nullptr, nullptr, reinterpret_cast<BYTE*>(text),
                                          &size) == ERROR_SUCCESS;
  ::RegCloseKey(key);
  return isThere ? std::optional<std::wstring>(text) : std::nullopt;
}

/// The DLL of the class, whose file may be gone; nothing where it is not registered.
std::optional<std::wstring> serverIn(HKEY hive, REGSAM view) {
  const std::wstring classes = LR"(Software\Classes\)";
  const auto id = textAt(hive, classes + LR"(Zentaro.CZentaro\CLSID)", view);
  return id ? textAt(hive, classes + LR"(CLSID\)" + *id + LR"(\InprocServer32)", view) : std::nullopt;
}

void judge(const std::string& width, REGSAM view, Findings& findings) {
  const std::string subject = "Zentaro.CZentaro, " + width + " bit";
  const auto forAll = serverIn(HKEY_LOCAL_MACHINE, view), forUser = serverIn(HKEY_CURRENT_USER, view);
  const auto server = forUser ? forUser : forAll;
  const std::string advice =
      say("instale otra vez con el instalador, o registre Zentaro.dll de {} bits con regsvr32",
          "install again by the setup program, or register the {}-bit Zentaro.dll by regsvr32", {width});
  if (!server)
    return findings.add(subject, {"missing-width", true,
                                  say("no está registrado: un programa de {} bits recibe el error 429",
                                      "is not registered: a {}-bit program gets the error 429", {width}),
                                  advice});
  const std::string path = terminal::narrow(*server);
  if (::GetFileAttributesW(server->c_str()) == INVALID_FILE_ATTRIBUTES)
    return findings.add(subject, {"missing-server", true,
                                  say("su archivo no está: {}", "its file is gone: {}", {path}), advice});
  if (forAll) return findings.add(subject, {"registered", false, path});
  findings.add(
      subject,
      {"for-one-user", ::IsUserAnAdmin() != 0,
       say("{}, solo para este usuario: un programa que se ejecuta como administrador recibe el error 429",
           "{}, for this user alone: a program that runs as administrator gets the error 429", {path}),
       say("para todos: ejecute el instalador como administrador",
           "for everybody: run the setup program as administrator")});
}

}  // namespace

// Where neither width is there, nobody wants it.
void judgeRegistration(Findings& findings) {
  SYSTEM_INFO system{};
  ::GetNativeSystemInfo(&system);
  const bool hasBoth = system.wProcessorArchitecture != PROCESSOR_ARCHITECTURE_INTEL;
  bool isWanted = false;
  for (HKEY const hive : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
    isWanted = isWanted || serverIn(hive, KEY_WOW64_32KEY) || (hasBoth && serverIn(hive, KEY_WOW64_64KEY));
  if (!isWanted) return;
  if (hasBoth) judge("64", KEY_WOW64_64KEY, findings);
  judge("32", KEY_WOW64_32KEY, findings);
}

}  // namespace zentaro::tools
