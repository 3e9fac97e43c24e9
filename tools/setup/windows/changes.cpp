// A port keeps its number here, and belongs to everybody.
#include "tools/setup/changes.h"

namespace zentaro::tools {

bool isRoot() { return false; }

std::string lastingName(const std::string& device, const std::string&) { return device; }

std::string accountName() { return {}; }

bool isMember(const std::string&, const std::string&) { return true; }

std::string ruleOfTheProgram() { return {}; }

}  // namespace zentaro::tools
