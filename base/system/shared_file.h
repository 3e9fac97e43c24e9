// Files that several accounts of a machine use, and locks that the system frees when their holder dies.
#pragma once

#include <filesystem>
#include <optional>

namespace zentaro::system {

/// Makes an empty file that its group may write, whatever the umask; what is there stays as it is. Raises
/// std::system_error.
void makeShared(const std::filesystem::path& file);

/// Makes a folder and those above it. A new folder is for its group, too, where the one above it hands its group
/// down (set-group-ID), else for this account alone. Raises std::system_error.
void makeFolders(const std::filesystem::path& folder);

/// Held until it is destroyed, or its process dies. Two in one process exclude each other as well.
class FileLock {
 public:
  /// Nothing when somebody holds it. The file is made when there is none, and never removed. Raises
  /// std::system_error.
  static std::optional<FileLock> tryTake(const std::filesystem::path& file);
  /// Whether somebody holds it.
  static bool isTaken(const std::filesystem::path& file);

  FileLock(FileLock&& other) noexcept : handle_(other.handle_) { other.handle_ = -1; }
  FileLock& operator=(FileLock&& other) noexcept;
  ~FileLock();

 private:
  explicit FileLock(std::intptr_t handle) : handle_(handle) {}

  std::intptr_t handle_;  // the system's own kind of number
};

}  // namespace zentaro::system
