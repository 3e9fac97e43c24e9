// Which word was meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zentaro::terminal {

/// The candidate that differs from the word in the fewest letters, capitals or not, or that begins
/// with it; empty when none is near.
std::string nearest(std::string_view word, const std::vector<std::string>& candidates);

}  // namespace zentaro::terminal
