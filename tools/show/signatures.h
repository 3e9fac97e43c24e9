// Class members as lines for people.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "automation/description.h"

namespace zentaro::tools {

/// Says a phrase of a description in another language.
using Wording = std::string (*)(std::string_view phrase);
inline std::string asItIs(std::string_view phrase) { return std::string(phrase); }

/// The members in interface order, the accessors of one property together.
std::vector<std::span<const Member>> memberGroups(const ClassDescription& description);

/// The members of that name, without regard to case; empty when there are none.
std::span<const Member> findMember(const ClassDescription& description, std::string_view name);

/// "RealizarCierre(nTipo: nTipoCierreFiscal, [Imprimir: Variant = True]): Int16", "PortOpen: Boolean (let
/// bIsOpen by reference, get)".
std::string signature(std::span<const Member> group, Wording wording = asItIs);

/// Which outcome codes the member gives, and where: "the result: -1, 0 to 5"; empty when it gives none.
std::string outcomesText(const Member& member, Wording wording = asItIs);

}  // namespace zentaro::tools
