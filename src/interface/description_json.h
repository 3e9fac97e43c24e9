// The type library as JSON, for programs that make something of it: bindings, tools, documentation.
#pragma once

#include <string>

#include "automation/description.h"
#include "zentaro_api.h"

namespace zentaro {

/// {"class", "interface", "creatable", "help", "members": [{"name", "kind", "parameters", "result",
/// "outcome", "sends", "help", "newValue"}]}, the members in interface order. A parameter, and the new
/// value of an assignment, is {"name", "type", "passing", "note", "optional", "default"}. The result is
/// null for none, and the type of the property for an assignment; "outcome" says that it is an outcome
/// code. "sends" is a list of {"command", "fields": [{"parameter" or "text", "encoding", "size"}],
/// "when"}, or a text for what is no command of the library's own.
ZENTARO_API std::string classJson(const ClassDescription& description);

/// {"library", "classes": [as above], "enumerations": [{"name", "values": {name: number}}]}
ZENTARO_API std::string libraryJson();

}  // namespace zentaro
