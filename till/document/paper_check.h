// What a document loses on paper, and what the printer is likely to refuse: warnings, not errors.
#pragma once

#include "till/document/group_reader.h"
#include "till/document/sale.h"

namespace zentaro::till {

/// Texts that are cut, characters that paper does not show, a RIF that is none, a discount above
/// every line, and payments that do not fit a printer with the usual IGTF rate. `descriptionLength`
/// is what the library cuts descriptions at.
Problems paperWarnings(const Sale& sale, int descriptionLength);

/// Empty for a RIF or identity card in its usual form, whose check digit is right when it has one; else what is
/// doubtful about it.
std::string rifDoubt(std::string_view rif);

}  // namespace zentaro::till
