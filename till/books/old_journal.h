// The journal of lines that one account kept before there were books, read into them.
#pragma once

#include <filesystem>

#include "till/books/books.h"

namespace zentaro::till {

/// Takes each entry over once, whatever is killed meanwhile; the file stays as it is, and is read again only when it
/// has changed. Ids are kept as they were. Where several entries have an id, the one that says most is its job
/// (printed, then unknown, then not printed; the later of equal ones), and the others are its attempts. Raises
/// BooksError for a file that is there and cannot be read.
void readOldJournal(Books& books, const std::filesystem::path& file);

}  // namespace zentaro::till
