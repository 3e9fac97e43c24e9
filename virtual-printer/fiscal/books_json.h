// The books as JSON text: the content of the state file.
#pragma once

#include <cstdint>
#include <string>

#include "virtual-printer/fiscal/books.h"

namespace printer {

/// Writes the same books again and again as they grow: the records that it has written once are kept as text.
class BooksText {
 public:
  static constexpr std::uint64_t emptySum = 14695981039346656037U;

  std::string of(const Books& books);
  /// For books that do not go on from the ones before.
  void forget() { *this = BooksText{}; }

 private:
  std::string lines_;             // of the records
  std::size_t count_ = 0;         // of them
  std::uint64_t sum_ = emptySum;  // over them
};

std::string toJson(const Books& books);

/// Throws std::runtime_error that names the first thing wrong; never returns half a memory.
Books booksFromJson(const std::string& text);

}  // namespace printer
