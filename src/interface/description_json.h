// The type library as JSON, for programs that make something of it: bindings, tools, documentation.
#pragma once

#include <string>

#include "automation/description.h"
#include "zentaro_api.h"

namespace zentaro {

/// {"class", "interface", "creatable", "help", "members": [{"name", "kind", "parameters", "result",
/// "outcome", "outcomes", "help", "newValue"}]}, with these of its members, in interface order. A
/// parameter, and the new value of an assignment, is {"name", "type", "passing", "note", "optional",
/// "default"}. The result is null for none, and the type of the property for an assignment; "outcome"
/// says that it is an outcome code, "outcomes" which codes the member gives, there or in nEnvironmentError.
ZENTARO_API std::string classJson(const ClassDescription& description, std::span<const Member> members);

/// {"library", "classes": [as above], "enumerations": [{"name", "values": {name: number}}]}
ZENTARO_API std::string libraryJson();

}  // namespace zentaro
