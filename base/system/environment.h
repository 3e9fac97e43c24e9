// What the process runs in: its variables, its account, its system.
#pragma once

#include <string>

namespace zentaro::system {

/// The value of the variable in UTF-8; empty when it is not set.
std::string variable(const char* name);

/// The account and what it belongs to, for a report: "maria: dialout users".
std::string accountText();
/// "Linux 6.1.0-13-amd64 x86_64".
std::string systemText();

}  // namespace zentaro::system
