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

void leaveToOwnerOfFolder(const std::filesystem::path&) {}  // a file has its folder's rights anyway

}  // namespace zentaro::system
