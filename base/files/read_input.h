// The file that a command is to work on.
#pragma once

#include <string>

namespace zentaro::base {

/// All of the file, or of standard input for "-". Raises std::system_error with the path and the
/// system's reason.
std::string readInput(const std::string& path);

}  // namespace zentaro::base
