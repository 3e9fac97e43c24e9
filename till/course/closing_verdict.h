// How the closing of a day ended: data, as of a sale.
#pragma once

#include <optional>

#include "reports/resultado_cierre.h"
#include "till/course/verdict.h"

namespace zentaro::till {

struct ClosingVerdict {
  Kind kind = Kind::Z;
  Ending ending = Ending::Unknown;
  Cause cause = {};
  std::optional<std::int64_t> number = {};      // of a Z that was printed
  std::optional<ResultadoCierre> figures = {};  // of one whose answer came
  int openDocument = 0;         // the printer's number of the kind of document that keeps it from closing
  std::optional<Job> job = {};  // of the books: this one, or the one that is in its way
};

}  // namespace zentaro::till
