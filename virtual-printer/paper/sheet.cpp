// Breaking of texts into lines of the paper's width.
#include "virtual-printer/paper/sheet.h"

#include <algorithm>

namespace virtual_printer {
namespace {

bool startsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }

// The bytes of the first `columns` characters.
std::size_t bytesOf(std::string_view text, std::size_t columns) {
  std::size_t at = 0;
  while (at < text.size() && (columns > 0 || !startsCharacter(text[at])))
    if (startsCharacter(text[at++])) --columns;
  return at;
}

// Breaks at the last space that fits, in the middle of a word that alone is too long.
std::vector<std::string> wrapped(std::string_view text) {
  std::vector<std::string> parts;
  while (columnsOf(text) > paperColumns) {
    std::size_t end = bytesOf(text, paperColumns);
    if (const std::size_t space = text.rfind(' ', end); space != std::string_view::npos && space > 0)
      end = space;
    parts.emplace_back(text.substr(0, end));
    text.remove_prefix(text[end] == ' ' ? end + 1 : end);
  }
  parts.emplace_back(text);
  return parts;
}

}  // namespace

std::size_t columnsOf(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), startsCharacter));
}

Line ruleLine() { return {LineStyle::Rule, {}, {}, {}}; }

void addText(Lines& lines, std::string_view text, LineStyle style) {
  for (std::string& part : wrapped(text)) lines.push_back({style, std::move(part), {}, {}});
}

void addMiddle(Lines& lines, std::string_view text, LineStyle style) {
  for (std::string& part : wrapped(text)) lines.push_back({style, {}, {}, std::move(part)});
}

void addPair(Lines& lines, std::string_view left, std::string_view right, LineStyle style) {
  addText(lines, left, style);
  if (columnsOf(lines.back().left) + 1 + columnsOf(right) > paperColumns)
    lines.push_back({style, {}, {}, {}});
  lines.back().right = right;
}

}  // namespace virtual_printer
