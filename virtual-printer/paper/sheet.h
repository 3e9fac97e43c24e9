// Paper as data: sheets made of lines. How a line looks in text, SVG or HTML is each renderer's affair.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

inline constexpr std::size_t paperColumns = 40;

enum class LineStyle { Plain, Bold, Title, Faint, Rule, Cut };

/// A line has a text at the left and one at the right margin, or one text in the middle. Texts are UTF-8.
struct Line {
  LineStyle style = LineStyle::Plain;
  std::string left;
  std::string right;
  std::string middle;
  bool operator==(const Line&) const = default;
};
using Lines = std::vector<Line>;

enum class SheetKind { Roll, ChequeFace, ChequeBack };

struct Sheet {
  SheetKind kind = SheetKind::Roll;
  std::string title;
  Lines lines;
};

/// Lines for the usual cases. A text that is too long for its line goes on below it.
Line ruleLine();
void addText(Lines& lines, std::string_view text, LineStyle style = LineStyle::Plain);
void addMiddle(Lines& lines, std::string_view text, LineStyle style = LineStyle::Plain);
void addPair(Lines& lines, std::string_view left, std::string_view right, LineStyle style = LineStyle::Plain);

/// The number of characters of a UTF-8 text.
std::size_t columnsOf(std::string_view text);

}  // namespace virtual_printer
