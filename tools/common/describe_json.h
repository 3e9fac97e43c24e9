// A class description, and each of its members, as JSON.
#pragma once

#include "automation/description.h"
#include "common/json.h"

namespace zentaro::tools {

/// {"class", "interface", "creatable", "help", "members": [...]}, the members in interface order.
Json describeClass(const ClassDescription& description);

/// {"name", "kind", "parameters", "result", "help"}; the result is null for none, and the type of the
/// property for an assignment.
Json describeMember(const Member& member);

}  // namespace zentaro::tools
