// Paper as data: sheets made of lines. How a line looks in text, SVG or HTML is each renderer's affair.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace printer {

inline constexpr std::size_t paperColumns = 40;

enum class LineStyle { plain, bold, title, faint, rule, cut };

// A line has a text at the left and one at the right margin, or one text in the middle. Texts are UTF-8.
struct Line {
  LineStyle style = LineStyle::plain;
  std::string left;
  std::string right;
  std::string middle;
  bool operator==(const Line&) const = default;
};
using Lines = std::vector<Line>;

enum class SheetKind { roll, chequeFace, chequeBack };

struct Sheet {
  SheetKind kind = SheetKind::roll;
  std::string title;
  Lines lines;
};

// Lines for the usual cases. A text that is too long for its line goes on below it.
Line ruleLine();
void addText(Lines& lines, std::string_view text, LineStyle style = LineStyle::plain);
void addMiddle(Lines& lines, std::string_view text, LineStyle style = LineStyle::plain);
void addPair(Lines& lines, std::string_view left, std::string_view right, LineStyle style = LineStyle::plain);

// The number of characters of a UTF-8 text.
std::size_t columnsOf(std::string_view text);

}  // namespace printer
