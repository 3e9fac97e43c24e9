// What a member sends, and how each parameter goes into a field, for people and as JSON.
#pragma once

#include <string>

#include "automation/description.h"
#include "common/json.h"

namespace zentaro::tools {

/// "0x44: empty, monto, \"T\"", one command behind the other; empty for a member that sends nothing.
std::string sentText(const Effect& effect);
Json sentJson(const Effect& effect);

/// What the parameter means and how it is sent: "amount, 2 implied decimals".
std::string meaning(const Member& member, const Parameter& parameter);

}  // namespace zentaro::tools
