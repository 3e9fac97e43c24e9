// The texts of the library's tables in the language of the program.
#pragma once

#include <string>
#include <string_view>

namespace zentaro::tools {

/// A help text, note or phrase of the class descriptions and settings; what is not known as it came.
std::string inLanguage(std::string_view given);

}  // namespace zentaro::tools
