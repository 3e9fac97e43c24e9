// The books as JSON text: the content of the state file.
#pragma once

#include <string>

#include "virtual-printer/fiscal/books.h"

namespace virtual_printer {

std::string toJson(const Books& books);

/// Throws std::runtime_error that names the first thing wrong; never returns half a memory.
Books booksFromJson(const std::string& text);

}  // namespace virtual_printer
