// Files of an account's own folder, which the system gives to that account alone.
#include "base/system/private_file.h"

#include <windows.h>

#include <system_error>

namespace zentaro::system {

void makePrivate(const std::filesystem::path& file) {
  HANDLE const made =
      ::CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (made != INVALID_HANDLE_VALUE) {
    ::CloseHandle(made);
    return;
  }
  const DWORD error = ::GetLastError();
  if (error != ERROR_FILE_EXISTS)
    throw std::system_error(static_cast<int>(error), std::system_category(), file.string());
}

std::string lookOf(const std::filesystem::path& file) {
  constexpr DWORD everybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  HANDLE const handle = ::CreateFileW(file.c_str(), FILE_READ_ATTRIBUTES, everybody, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
  BY_HANDLE_FILE_INFORMATION found{};
  const bool isKnown = handle != INVALID_HANDLE_VALUE && ::GetFileInformationByHandle(handle, &found) != 0;
  if (handle != INVALID_HANDLE_VALUE) ::CloseHandle(handle);
  std::string look;
  for (const DWORD part : {found.nFileIndexHigh, found.nFileIndexLow, found.nFileSizeLow,
                           found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime})
    look += std::to_string(part) + " ";
  return isKnown ? look : "";
}

void leaveToOwnerOfFolder(const std::filesystem::path&) {}  // a file has its folder's rights anyway

}  // namespace zentaro::system
