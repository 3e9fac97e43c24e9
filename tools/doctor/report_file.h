// The text that `zentaro doctor --report` writes for whoever helps.
#pragma once

#include <string>

namespace zentaro::tools {

/// Program, system, moment, account and its groups, what doctor said, the last sales without customers or contents,
/// and the exchanges of the run without the texts in them. Raises std::runtime_error when it cannot be written.
void writeReport(const std::string& path, const std::string& findings, const std::string& trace);

}  // namespace zentaro::tools
