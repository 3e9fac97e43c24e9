// What the command line shows of the books, and what a person says about a sale that is unknown.
#pragma once

#include <string>

#include "till/document/sale.h"

namespace zentaro::tools {

/// Shows the latest jobs. Gives the exit status.
int showJournal(bool isJson);

/// Notes what the paper shows of the sale of that id or, without one, of that content. Gives the exit status; raises
/// std::runtime_error when there is no such question.
int resolve(const till::Sale& sale, const std::string& id, bool isPrinted, bool isJson);

}  // namespace zentaro::tools
