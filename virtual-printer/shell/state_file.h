// The file that keeps the books over a restart.
#pragma once

#include <filesystem>

#include "fiscal/books.h"
#include "line/descriptor.h"

namespace printer {

class StateFile {
 public:
  // Takes the file for this printer alone; throws std::runtime_error when another printer has it.
  explicit StateFile(std::filesystem::path path);

  // New books when there is no file yet. Throws std::runtime_error, and leaves the file alone, when it cannot
  // be understood.
  Books load() const;
  // Throws std::system_error; the file then holds the books saved before.
  void save(const Books& books) const;

 private:
  std::filesystem::path path_;
  Descriptor lock_;
};

}  // namespace printer
