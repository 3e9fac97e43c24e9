// Why a text is no JSON, for whoever wrote it by hand.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zentaro::base {

/// "parse error at line 3, column 5: a comma is missing before "price"". `position` is the number of characters that
/// the parser had read, `said` its own words.
std::string jsonProblem(std::string_view text, std::size_t position, std::string_view said);

}  // namespace zentaro::base
