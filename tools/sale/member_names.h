// The names that a sale's file gives its members: English or Spanish ones, never both in one file.
#pragma once

#include <string>
#include <string_view>

namespace zentaro::tools {

enum class FileLanguage { English, Spanish };

/// The name of a member in a file of that language, by its English name: "lines" is "renglones".
std::string_view memberName(std::string_view english, FileLanguage language);

}  // namespace zentaro::tools
