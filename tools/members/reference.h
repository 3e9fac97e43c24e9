// The reference manual, written from the class descriptions.
#pragma once

#include <string>

namespace zentaro::tools {

/// The whole of docs/reference.md.
std::string referencePage();

}  // namespace zentaro::tools
