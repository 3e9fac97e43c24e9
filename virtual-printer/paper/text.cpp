// Setting of lines in columns.
#include "virtual-printer/paper/text.h"

namespace virtual_printer {
namespace {

std::string spaces(std::size_t wanted, std::size_t taken) {
  return wanted > taken ? std::string(wanted - taken, ' ') : std::string{};
}

}  // namespace

std::string textLine(const Line& line) {
  if (line.style == LineStyle::Rule) return std::string(paperColumns, '-');
  if (line.style == LineStyle::Cut) return "- - - - - - - - - - - - - - - - - - - -";
  if (!line.middle.empty()) return spaces((paperColumns - columnsOf(line.middle)) / 2, 0) + line.middle;
  if (line.right.empty()) return line.left;
  return line.left + spaces(paperColumns, columnsOf(line.left) + columnsOf(line.right)) + line.right;
}

std::string textPaper(const std::deque<Sheet>& sheets) {
  std::string text;
  for (const Sheet& sheet : sheets)
    for (const Line& line : sheet.lines) text += textLine(line) + "\n";
  return text;
}

}  // namespace virtual_printer
