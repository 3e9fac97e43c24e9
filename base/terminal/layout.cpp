// Counting and breaking.
#include "base/terminal/layout.h"

#include <algorithm>
#include <cstdlib>

#include "base/terminal/console.h"

namespace zentaro::terminal {

namespace {

bool beginsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

// The bytes of the first `columns` characters.
std::size_t bytesOf(std::string_view text, std::size_t columns) {
  for (std::size_t at = 0; at < text.size(); ++at)
    if (beginsCharacter(text[at]) && columns-- == 0) return at;
  return text.size();
}

}  // namespace

std::size_t screenColumns() {
  constexpr std::size_t usual = 80, least = 20;
  const char* told = std::getenv("COLUMNS");
  if (const long columns = told == nullptr ? 0 : std::strtol(told, nullptr, 10); columns > 0)
    return std::max(least, static_cast<std::size_t>(columns));
  const std::size_t columns = terminalColumns();
  return columns > 0 ? std::max(least, columns) : usual;
}

std::size_t columnsOf(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(text, beginsCharacter));
}

std::string padded(std::string text, std::size_t columns) {
  return text.append(columns - std::min(columns, columnsOf(text)), ' ');
}

std::string paddedLeft(const std::string& text, std::size_t columns) {
  return std::string(columns - std::min(columns, columnsOf(text)), ' ') + text;
}

std::string whole(std::string text) {
  std::ranges::replace(text, ' ', wholeBlank);
  return text;
}

std::string quoted(const std::string& command) { return '"' + whole(command) + '"'; }

std::string withCommands(std::string_view text) {
  std::string all;
  for (std::size_t at = 0, end = 0; at < text.size(); at = end) {
    end = std::min(text.find('\n', at), text.size() - 1) + 1;
    const std::string line(text.substr(at, end - at));
    all += line.starts_with("    ") ? whole(line) : line;
  }
  return all;
}

std::string plain(std::string text) {
  std::ranges::replace(text, wholeBlank, ' ');
  return text;
}

std::vector<std::string> wrapped(std::string_view text, std::size_t columns, std::string_view indent) {
  std::vector<std::string> lines;
  std::string before;
  columns = std::max<std::size_t>(columns, 10);
  for (;;) {
    const std::size_t end = bytesOf(text, columns - columnsOf(before));
    if (end == text.size()) break;
    // The blank may stand right behind the last column.
    const std::size_t blank = text.rfind(' ', end), begin = text.find_first_not_of(' ');
    const bool isCut = blank == std::string_view::npos || begin == std::string_view::npos || blank < begin;
    const std::size_t taken = isCut ? end : blank;
    lines.push_back(before + std::string(text.substr(0, taken)));
    text.remove_prefix(isCut ? taken : taken + 1);
    before = indent;
  }
  lines.push_back(before + std::string(text));
  return lines;
}

}  // namespace zentaro::terminal
