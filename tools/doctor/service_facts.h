// The service that keeps the books, its printers, and what waits for them.
#pragma once

#include <string>

#include "tools/doctor/finding.h"

namespace zentaro::tools {

void judgeService(const std::string& books, Findings& findings);

}  // namespace zentaro::tools
