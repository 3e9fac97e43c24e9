// Names for people of what a class description holds.
#pragma once

#include <string>

#include "automation/description.h"

namespace zentaro::tools {

/// "Variant", "Int16", "Text", or the name of the class or enumeration; empty for no value.
std::string typeName(const Type& type);

/// "get", "let", "set" or "method".
std::string accessName(Access access);

/// "Zentaro.CZentaro": what a host creates the class by.
std::string qualifiedName(const ClassDescription& description);

}  // namespace zentaro::tools
