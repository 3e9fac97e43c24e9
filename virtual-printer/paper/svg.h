// Sheets as drawings: paper strips with torn edges, cheques as cheques.
#pragma once

#include <deque>
#include <string>

#include "virtual-printer/paper/sheet.h"

namespace virtual_printer {

struct Drawing {
  int width = 0;
  int height = 0;
  std::string content;  // SVG elements, its origin at the upper left
};

Drawing drawSheet(const Sheet& sheet);

/// All sheets on a table, in rows.
std::string svgPaper(const std::deque<Sheet>& sheets);

/// A page that shows each sheet below its title.
std::string htmlPaper(const std::deque<Sheet>& sheets);

/// Text with the characters replaced that mean something in XML.
std::string escaped(std::string_view text);

/// The parts of an SVG document around its content.
std::string svgBegin(int width, int height);
inline constexpr std::string_view svgEnd = "</svg>\n";

}  // namespace virtual_printer
