// What was sold between two moments, by the books.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "till/books/job.h"
#include "till/document/totals.h"

namespace zentaro::tools {

/// Amounts in cents. Those of returns are what was given back.
struct Sold {
  int documents = 0;
  std::int64_t net = 0, tax = 0, igtf = 0;
  /// Of documents whose content the books have no longer: tax and IGTF together.
  std::int64_t taxOrIgtf = 0;
  std::int64_t total() const { return net + tax + igtf + taxOrIgtf; }
};

struct DayFigures {
  Sold invoices, returns;
  std::vector<till::Job> unknown;       // nobody knows whether they were printed
  std::optional<till::Job> lastZ = {};  // the last one that was printed in that time
};

/// The figures of these jobs; what was not printed counts nowhere.
DayFigures figuresOf(const std::vector<till::Job>& jobs);

/// "1.234,56", as on the paper.
std::string paperAmount(std::int64_t cents);

}  // namespace zentaro::tools
