// What is wrong with the books of the sales.
#pragma once

#include <string>

#include "tools/doctor/finding.h"

namespace zentaro::tools {

/// Damage, and sales of which nobody knows whether they were printed. Books that are not there are
/// no fault, and are not made.
void judgeBooks(const std::string& path, Findings& findings);

}  // namespace zentaro::tools
