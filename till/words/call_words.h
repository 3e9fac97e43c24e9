// What a check of a document and a look at open questions found, as records for programs.
#pragma once

#include "base/files/json_fwd.h"
#include "till/zentaro_till.h"

namespace zentaro::till {

/// A list of {"path", "text"}.
Json problemsJson(const Problems& problems);

/// {"problems", "warnings", "net", "tax", "igtf", "total", "paid", "change"}: what problemsJson() gives, and
/// amounts as texts, which are null while there are problems. The total is with the IGTF.
Json checkedJson(const Checked& checked);

/// {"refusal", "cause", "machine", "judged", "open"}: jobs as jobJson() gives them. "refusal" is null, or the name of the
/// verdict why nothing was asked.
Json settledJson(const Settled& settled);

/// A list of what jobJson() gives.
Json jobsJson(const std::vector<Job>& jobs);

}  // namespace zentaro::till
