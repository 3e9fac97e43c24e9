// What a member sends, and how each parameter goes into a field, in words.
#pragma once

#include <string>
#include <string_view>

#include "automation/description.h"

namespace zentaro {

/// "as given", "implied decimals" and so on.
ZENTARO_API std::string_view encodingName(Encoding encoding);

/// "0x44: empty, monto, \"T\"", one command behind the other; empty for a member that sends nothing.
ZENTARO_API std::string sentText(const Effect& effect);

/// What the parameter means and how it is sent: "amount, 2 implied decimals".
ZENTARO_API std::string meaning(const Member& member, const Parameter& parameter);

}  // namespace zentaro
