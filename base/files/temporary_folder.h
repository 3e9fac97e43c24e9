// A folder of this process alone, removed with all that is in it.
#pragma once

#include <filesystem>

namespace zentaro::base {

class TemporaryFolder {
 public:
  /// Raises std::system_error when the system's folder for temporary files cannot be written.
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace zentaro::base
