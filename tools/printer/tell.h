// Control lines to a running virtual printer.
#pragma once

#include <string>

namespace zentaro::tools {

/// Sends one line to the control socket of a virtual printer; its reply, whose last line begins with "ok" or
/// "error". Raises std::runtime_error when nobody answers there.
std::string tell(const std::string& socket, const std::string& line);

}  // namespace zentaro::tools
