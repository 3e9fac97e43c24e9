// The figures of what was printed, for programs: amounts as texts with two decimals.
#pragma once

#include "base/files/json_fwd.h"
#include "reports/resultado_cierre.h"
#include "till/course/verdict.h"

namespace zentaro::till {

/// Of a closing, grouped as the paper does.
Json figuresJson(const ResultadoCierre& figures);

/// Of a document that was printed: {"total", "igtf", "change"}.
Json amountsJson(const Verdict& verdict);

}  // namespace zentaro::till
