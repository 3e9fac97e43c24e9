// Capitals that the printer's paper has.
#pragma once

#include <string>
#include <string_view>

namespace zentaro::till {

/// The UTF-8 text with its capitals, and the letters whose accents nobody takes off later, as plain ones: "JOSÉ PÉREZ"
/// becomes "JOSE PEREZ", which would be printed as "JOS. P.REZ".
std::string withPlainCapitals(std::string_view text);

}  // namespace zentaro::till
