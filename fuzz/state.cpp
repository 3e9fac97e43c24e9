// State files of the virtual printer: refused, or books that are saved and loaded as the same.
#include <stdexcept>

#include "check.h"
#include "virtual-printer/fiscal/books_json.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  virtual_printer::Books books;
  try {
    books = virtual_printer::booksFromJson(std::string(fuzz::textOf(data, size)));
  } catch (const std::runtime_error&) {
    return 0;
  }
  fuzz::require(virtual_printer::booksFromJson(virtual_printer::toJson(books)) == books,
                "books that were saved load equal");
  return 0;
}
