// Texts in the columns of a terminal. A column holds one character: nothing that is written here is wider.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zentaro::terminal {

/// The columns of standard output: COLUMNS, else what the terminal says, else 80.
std::size_t screenColumns();

/// How many characters the UTF-8 text has.
std::size_t columnsOf(std::string_view text);

/// The text with blanks behind it, or before it, up to that many columns.
std::string padded(std::string text, std::size_t columns);
std::string paddedLeft(const std::string& text, std::size_t columns);

/// The text in lines of at most that many columns (at least 10), broken at blanks; a word that is longer is cut. Lines
/// behind the first begin with the indent.
std::vector<std::string> wrapped(std::string_view text, std::size_t columns, std::string_view indent = "");

}  // namespace zentaro::terminal
