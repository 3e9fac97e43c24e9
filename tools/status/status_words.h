// What the status says, in words.
#pragma once

#include <string>

#include "automation/object.h"
#include "printer/czentaro.h"
#include "tools/status/status_bits.h"

namespace zentaro::tools {

/// The open document, the day and, with known bits, paper and cover: a line each. `normal` and `numeric` are
/// the records statusN and statusHASAR, the latter of the printer's last answer.
std::string statusInWords(const Object& normal, const Object& numeric, const CZentaro& printer, Bits bits);

}  // namespace zentaro::tools
