// The type library as JSON, for programs that make something of it: bindings, tools, documentation.
#pragma once

#include <string>

#include "automation/description.h"
#include "zentaro_api.h"

namespace zentaro {

/// "Variant", "Int16", "Text", or the name of the class or enumeration; empty for no value.
ZENTARO_API std::string typeName(const Type& type);

/// "get", "let", "set" or "method".
ZENTARO_API std::string accessName(Access access);

/// {"class", "interface", "creatable", "help", "members": [{"name", "kind", "parameters", "result",
/// "outcome", "help"}]}, the members in interface order. A parameter is {"name", "type", "passing", "note",
/// "optional", "default"}. The result is null for none, and the type of the property for an assignment;
/// "outcome" says that it is an outcome code.
ZENTARO_API std::string classJson(const ClassDescription& description);

/// {"library", "classes": [as above], "enumerations": [{"name", "values": {name: number}}]}
ZENTARO_API std::string libraryJson();

}  // namespace zentaro
