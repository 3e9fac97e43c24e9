// How a closing ended, in words for the cashier and as a record for programs.
#pragma once

#include <string>

#include "base/files/json_fwd.h"
#include "till/course/closing_verdict.h"
#include "till/words/verdict_words.h"

namespace zentaro::till {

/// What happened, with the day's sums, and what is to be done next. Without a line end behind the last line.
std::string closingText(const ClosingVerdict& verdict, const SalePlace& place);

/// What ends a document that is in the way, by the printer's number of its kind: words for `zentaro call`.
std::string endingCommand(int document);

/// The figures as the paper groups and names them, a value a line; empty without figures.
std::string figuresText(const ClosingVerdict& verdict);

/// {"closing", "verdict", "number", "cause", "next", "virtual"}; what is not known is null.
Json closingJson(const ClosingVerdict& verdict, const SalePlace& place);

}  // namespace zentaro::till
