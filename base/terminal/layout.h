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

/// Text at whose blanks no line is broken, for whoever writes what is copied or what a program reads: a command,
/// JSON. It is for standard output and standard error alone, where a blank comes of what stands for it here.
std::string whole(std::string text);
std::string quoted(const std::string& command);  // whole, in double quotes
/// With its lines whole that are indented by four blanks: the commands in a text.
std::string withCommands(std::string_view text);
/// The same text with blanks again, for anything but these two.
std::string plain(std::string text);
inline constexpr char wholeBlank = '\x1F';

/// The text in lines of at most that many columns (at least 10), broken at blanks; a word that is longer is cut. Lines
/// behind the first begin with the indent.
std::vector<std::string> wrapped(std::string_view text, std::size_t columns, std::string_view indent = "");

}  // namespace zentaro::terminal
