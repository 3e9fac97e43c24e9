// Rights come from the folder; a lock belongs to the handle that took it.
#include "base/system/shared_file.h"

#include <windows.h>

#include <system_error>
#include <utility>

namespace zentaro::system {

namespace {

HANDLE handleOf(std::intptr_t number) { return reinterpret_cast<HANDLE>(number); }

[[noreturn]] void fail(const std::filesystem::path& path) {
  throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(), path.string());
}

HANDLE opened(const std::filesystem::path& file) {
  constexpr DWORD everybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  HANDLE const handle = ::CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE, everybody, nullptr,
                                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) fail(file);
  return handle;
}

/// A byte far behind the end, so that the content stays readable.
bool lock(HANDLE handle) {
  OVERLAPPED place{};
  place.OffsetHigh = 0x40000000;
  return ::LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0;
}

}  // namespace

void makeShared(const std::filesystem::path& file) { ::CloseHandle(opened(file)); }

void makeFolders(const std::filesystem::path& folder) {
  if (folder.empty()) return;
  std::error_code failed;
  std::filesystem::create_directories(folder, failed);
  if (failed) throw std::system_error(failed, folder.string());
}

std::optional<FileLock> FileLock::tryTake(const std::filesystem::path& file) {
  FileLock taken(reinterpret_cast<std::intptr_t>(opened(file)));
  if (lock(handleOf(taken.handle_))) return taken;
  const DWORD error = ::GetLastError();
  if (error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING) fail(file);
  return std::nullopt;
}

bool FileLock::isTaken(const std::filesystem::path& file) {
  return std::filesystem::exists(file) && !tryTake(file);
}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

FileLock::~FileLock() {
  if (handle_ != -1) ::CloseHandle(handleOf(handle_));
}

}  // namespace zentaro::system
