// Text files opened for appending.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <system_error>

namespace zentaro {

/// An open file; closed when destroyed.
class AppendFile {
 public:
  virtual ~AppendFile() = default;
  /// Appends all of `bytes` in one write, so that the lines of two writers of one file never mix.
  virtual std::error_code write(std::string_view bytes) = 0;
};

class Files {
 public:
  virtual ~Files() = default;
  /// Opens `path` (UTF-8), making the file when it is missing; null and `error` set on failure.
  virtual std::unique_ptr<AppendFile> openForAppend(const std::string& path, std::error_code& error) = 0;
};

}  // namespace zentaro
