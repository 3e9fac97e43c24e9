// The reference manual, written from the class descriptions.
#pragma once

#include <string>

namespace zentaro::tools {

/// The whole of docs/reference.md, or of docs/es/referencia.md, by the language of the program.
std::string referencePage();

}  // namespace zentaro::tools
