// How a sale ended, in words for the cashier and as a record for programs.
#pragma once

#include <string>

#include "base/files/json_fwd.h"
#include "till/course/verdict.h"

namespace zentaro::till {

/// The printer that a sale was sent to.
struct SalePlace {
  std::string portWords;  // the options by which another command uses it: "--device /dev/ttyUSB0"
  bool isVirtual = false;
};

/// "00000005", or that it is not known.
std::string numberText(const std::optional<std::int64_t>& number);

/// What happened, what the cashier does next, the number and the amounts of a printed document, and the cause
/// of one that was not. Several lines, without a line end behind the last; a command stands on a line of its own,
/// indented by four blanks.
std::string verdictText(const Verdict& verdict, const SalePlace& place);

/// {"verdict", "number", "total", "igtf", "change", "cause", "next", "virtual"}. "verdict" is in no language;
/// amounts are texts; what is not known is null.
Json verdictJson(const Verdict& verdict, const SalePlace& place);

/// What is said of everything that a virtual printer prints.
std::string virtualNotice();

}  // namespace zentaro::till
