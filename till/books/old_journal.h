// The journal of lines that one account kept before there were books, read into them.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "till/books/books.h"

namespace zentaro::till {

/// The books of booksPath(), with what an old journal of this account holds.
std::unique_ptr<Books> openBooks(const LockPatience& patience = {});

/// Takes each entry over once, whatever is killed meanwhile; the file stays as it is, and is read again only when it
/// has changed. Ids are kept as they were. Where several entries have an id, the one that says most is its job
/// (printed, then unknown, then not printed; the later of equal ones), and the others are its attempts.
void readOldJournal(Books& books, const std::filesystem::path& file);

}  // namespace zentaro::till
