// Jobs of the books, for people and for programs.
#pragma once

#include <string>
#include <vector>

#include "base/files/json_fwd.h"
#include "till/books/job.h"

namespace zentaro::till {

/// A table, a job a line.
std::string jobsText(const std::vector<Job>& jobs);

/// {"id", "printer", "kind", "attempt", "state", "verdict", "number", "machine", "total", "cause",
/// "accepted", "begun", "ended", "revision"}. Names are in no language, amounts are texts, moments
/// are UTC in ISO form; what is not known is null.
Json jobJson(const Job& job);

/// "2024-03-15T14:05:09Z"; null for none.
Json momentJson(Moment at);

}  // namespace zentaro::till
