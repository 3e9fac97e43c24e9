// The file that keeps the books over a restart.
#pragma once

#include <filesystem>

#include "base/system/shared_file.h"
#include "virtual-printer/fiscal/books_json.h"

namespace virtual_printer {

class StateFile {
 public:
  /// Takes the file, or what a link of that name leads to, for this printer alone. Throws std::runtime_error
  /// when another printer has it.
  explicit StateFile(const std::filesystem::path& path);

  /// New books when there is no file yet. A file that cannot be understood is left alone, and
  /// std::runtime_error is thrown.
  Books load() const;
  /// Throws std::runtime_error; the file then holds the books saved before.
  void save(const Books& books) const;

 private:
  std::filesystem::path path_;
  std::optional<zentaro::system::FileLock> lock_;
};

}  // namespace virtual_printer
