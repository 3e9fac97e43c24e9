// Two columns, and paragraphs.
#include "base/terminal/help.h"

#include <sstream>

#include "base/terminal/layout.h"

namespace zentaro::terminal {

namespace {

// Each line of the text is a paragraph.
std::string paragraphs(const std::string& text) {
  std::istringstream lines(text);
  std::string page;
  for (std::string line; std::getline(lines, line);)
    for (const std::string& row : wrapped(line, screenColumns())) page += row + "\n";
  return page;
}

std::string entry(const std::string& name, const std::string& description, std::size_t column) {
  const std::string head = "  " + name, noHead(column, ' ');
  const bool isAlone = columnsOf(head) + 1 > column;
  std::string text = isAlone ? head + "\n" : "", before = isAlone ? noHead : padded(head, column);
  for (const std::string& row : wrapped(description, screenColumns() - column)) {
    text += before + row + "\n";
    before = noHead;
  }
  return text;
}

}  // namespace

// The parser leaves a gap before a part that is empty, too.
std::string HelpLayout::make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const {
  std::string page = Formatter::make_help(app, std::move(name), mode);
  for (std::size_t gap = page.find("\n\n\n"); gap != std::string::npos; gap = page.find("\n\n\n"))
    page.erase(gap, 1);
  return page.substr(0, page.find_last_not_of('\n') + 1) + "\n";
}

std::string HelpLayout::make_description(const CLI::App* app) const {
  return paragraphs(app->get_description());
}

std::string HelpLayout::make_footer(const CLI::App* app) const { return paragraphs(app->get_footer()); }

std::string HelpLayout::make_option(const CLI::Option* option, bool isPositional) const {
  std::string name = make_option_name(option, isPositional);
  const bool takesValue = option->get_type_size() != 0 && !option->get_type_name().empty();
  if (takesValue && !isPositional) name += " " + option->get_type_name();
  if (option->get_expected_max() >= CLI::detail::expected_max_vector_size) name += " ...";
  return entry(name, make_option_desc(option), get_column_width());
}

std::string HelpLayout::make_subcommand(const CLI::App* command) const {
  constexpr std::size_t column = 12;  // the names are short
  return entry(command->get_name(), command->get_description(), column);
}

}  // namespace zentaro::terminal
