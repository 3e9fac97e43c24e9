// Names of what a class description holds, for people and programs.
#pragma once

#include <string>

#include "automation/description.h"

namespace zentaro {

/// "Variant", "Int16", "Text", or the name of the class or enumeration; empty for no value.
ZENTARO_API std::string typeName(const Type& type);

/// "get", "let", "set" or "method".
ZENTARO_API std::string accessName(Access access);

/// "Zentaro.CZentaro": what a host creates the class by.
ZENTARO_API std::string qualifiedName(const ClassDescription& description);

}  // namespace zentaro
