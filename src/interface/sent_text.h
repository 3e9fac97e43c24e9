// What a member sends, and how each parameter goes into a field, in words.
#pragma once

#include <string>
#include <string_view>

#include "automation/description.h"

namespace zentaro {

/// "as given", "implied decimals" and so on.
ZENTARO_API std::string_view encodingName(Encoding encoding);

/// Says a phrase of a description in another language; "#" in it is a number.
using Wording = std::string_view (*)(std::string_view phrase);
constexpr std::string_view asItIs(std::string_view phrase) { return phrase; }

/// "0x44: empty, monto, \"T\"", one command behind the other; empty for a member that sends nothing.
ZENTARO_API std::string sentText(const Effect& effect, Wording wording = asItIs);

/// What the parameter means and how it is sent: "amount, 2 implied decimals".
ZENTARO_API std::string meaning(const Member& member, const Parameter& parameter, Wording wording = asItIs);

}  // namespace zentaro
