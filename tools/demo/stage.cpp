// Columns of the stage.
#include "tools/demo/stage.h"

#include <algorithm>
#include <iostream>
#include <sstream>

#include "base/terminal/harmless.h"
#include "base/terminal/layout.h"

namespace zentaro::tools {

using terminal::Colour;
using terminal::coloured;

namespace {

constexpr std::size_t paperColumns = 44, leastForCalls = 56, mostForCalls = 76;
constexpr std::string_view paperEdge = "| ";

std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  std::istringstream rest{std::string(text)};
  for (std::string line; std::getline(rest, line);) lines.push_back(terminal::harmless(line));
  return lines;
}

std::string onPaper(const std::string& line) {
  return coloured(Colour::Faint, paperEdge) + coloured(Colour::Strong, line);
}

}  // namespace

Stage::Stage() : columns_(terminal::screenColumns()), isWide_(columns_ >= leastForCalls + paperColumns) {
  if (isWide_) columns_ = std::min(columns_ - paperColumns, mostForCalls);
}

void Stage::begin(const std::string& title) {
  std::cout << '\n' << coloured(Colour::Strong, "-- " + title) << "\n\n" << std::flush;
}

void Stage::show(Colour colour, std::string_view text) {
  const std::string indent(text.find_first_not_of(' ') + 4, ' ');
  for (const std::string& line : terminal::wrapped(text, isWide_ ? columns_ - 2 : columns_, indent)) {
    if (isWide_)
      waiting_.push_back({colour, line});
    else
      std::cout << coloured(colour, line) << '\n' << std::flush;
  }
}

void Stage::end(std::string_view paper) {
  const std::vector<std::string> sheet = linesOf(paper);
  if (!isWide_ && !sheet.empty()) std::cout << '\n';
  if (!isWide_)
    for (const std::string& line : sheet) std::cout << "    " << onPaper(line) << '\n';
  for (std::size_t row = 0; isWide_ && row < std::max(waiting_.size(), sheet.size()); ++row) {
    const Line call = row < waiting_.size() ? waiting_[row] : Line{Colour::None, ""};
    std::cout << coloured(call.colour, call.text);
    if (row < sheet.size())
      std::cout << std::string(columns_ - terminal::columnsOf(call.text), ' ') << onPaper(sheet[row]);
    std::cout << '\n';
  }
  waiting_.clear();
}

}  // namespace zentaro::tools
