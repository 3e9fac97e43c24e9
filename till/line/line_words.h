// What came of asking a printer, in words.
#pragma once

#include <string>

#include "till/line/recovery.h"

namespace zentaro::till {

/// As a sentence without a full stop; empty for an answer that is in step.
std::string trouble(Heard heard);

}  // namespace zentaro::till
