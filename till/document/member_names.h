// The names that a sale's file gives its members: English or Spanish ones, never both in one file.
#pragma once

#include <string>
#include <string_view>

namespace zentaro::till {

enum class FileLanguage { English, Spanish };

/// The name of a member in a file of that language, by its English name: "lines" is "renglones".
std::string_view memberName(std::string_view english, FileLanguage language);

/// The name that a file of that language has for a member which stands there by its name in the other one; empty
/// for a name that is none.
std::string_view translatedName(std::string_view other, FileLanguage language);

}  // namespace zentaro::till
