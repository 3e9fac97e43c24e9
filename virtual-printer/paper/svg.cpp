// Drawing of one sheet. Every character stands in a column of its own, whatever font the viewer has.
#include "paper/svg.h"

#include <algorithm>
#include <array>

namespace printer {
namespace {

constexpr int columnTenths = 72;  // width of a column in tenths of a pixel
constexpr int lineHeight = 17;
constexpr int tallLineHeight = 27;
constexpr int margin = 24;
constexpr int tooth = 8;

struct Look {
  const char* paper;
  const char* edge;
  int extraWidth;
};

Look lookOf(SheetKind kind) {
  switch (kind) {
    case SheetKind::chequeFace:
      return {"#edf4ea", "#7f9f78", 190};
    case SheetKind::chequeBack:
      return {"#f3f0e6", "#a89b76", 190};
    case SheetKind::roll:
      break;
  }
  return {"#fffefa", "#d8d4c8", 0};
}

int heightOf(const Line& line) {
  if (line.style == LineStyle::cut) return 0;
  return line.style == LineStyle::title ? tallLineHeight : lineHeight;
}

std::string number(int value) { return std::to_string(value); }

std::string attribute(const char* name, std::string_view value) {
  return " " + std::string{name} + "=\"" + std::string{value} + "\"";
}

std::string pixels(std::size_t columns) {
  const auto tenths = static_cast<int>(columns) * columnTenths;
  return number(tenths / 10) + "." + number(tenths % 10);
}

// A title is twice as tall as it is wide, like the double height of a thermal printer.
std::string textElement(std::string_view text, const char* anchor, int x, int y, LineStyle style) {
  if (text.empty()) return {};
  std::string element = "<text" + attribute("text-anchor", anchor);
  const bool isTall = style == LineStyle::title;
  element += attribute("transform",
                       "translate(" + number(x) + "," + number(y) + ")" + (isTall ? " scale(1,1.6)" : ""));
  element += attribute("textLength", pixels(columnsOf(text))) + attribute("lengthAdjust", "spacingAndGlyphs");
  if (isTall || style == LineStyle::bold) element += attribute("font-weight", "bold");
  if (style == LineStyle::faint) element += attribute("fill", "#777");
  return element + ">" + escaped(text) + "</text>\n";
}

std::string lineElements(const Line& line, int width, int y) {
  if (line.style == LineStyle::cut) return {};
  if (line.style == LineStyle::rule)
    return "<path" +
           attribute("d", "M" + number(margin) + " " + number(y - 5) + "H" + number(width - margin)) +
           attribute("stroke", "#55555c") + attribute("stroke-dasharray", "4 3") + "/>\n";
  return textElement(line.left, "start", margin, y, line.style) +
         textElement(line.middle, "middle", width / 2, y, line.style) +
         textElement(line.right, "end", width - margin, y, line.style);
}

// A strip with teeth where the paper was torn off.
std::string stripPath(int width, int height) {
  std::string path = "M0 " + number(tooth / 2);
  for (int x = tooth; x <= width; x += tooth)
    path += "L" + number(x - tooth / 2) + " 0L" + number(x) + " " + number(tooth / 2);
  path += "V" + number(height - tooth / 2);
  for (int x = width - tooth; x >= 0; x -= tooth)
    path += "L" + number(x + tooth / 2) + " " + number(height) + "L" + number(x) + " " +
            number(height - tooth / 2);
  return path + "Z";
}

std::string outline(const Sheet& sheet, int width, int height) {
  const Look look = lookOf(sheet.kind);
  const std::string paint = attribute("fill", look.paper) + attribute("stroke", look.edge);
  if (sheet.kind == SheetKind::roll)
    return "<path" + attribute("d", stripPath(width, height)) + paint + attribute("filter", "url(#shadow)") +
           "/>\n";
  const std::string size = attribute("width", number(width)) + attribute("height", number(height));
  const std::string inner = attribute("x", "7") + attribute("y", "7") +
                            attribute("width", number(width - 14)) + attribute("height", number(height - 14));
  return "<rect" + size + attribute("rx", "6") + paint + attribute("filter", "url(#shadow)") + "/>\n<rect" +
         inner + attribute("rx", "3") + attribute("fill", "none") + attribute("stroke", look.edge) +
         attribute("stroke-dasharray", "1 2") + "/>\n";
}

}  // namespace

Drawing drawSheet(const Sheet& sheet) {
  constexpr int across = static_cast<int>(paperColumns) * columnTenths / 10 + 2 * margin;
  const int width = (across + lookOf(sheet.kind).extraWidth) / tooth * tooth;
  int height = 2 * margin;
  for (const Line& line : sheet.lines) height += heightOf(line);
  std::string content = outline(sheet, width, height);
  int y = margin;
  for (const Line& line : sheet.lines) {
    y += heightOf(line);
    content += lineElements(line, width, y - (line.style == LineStyle::title ? 6 : 4));
  }
  return {width, height, content};
}

std::string escaped(std::string_view text) {
  std::string out;
  for (const char byte : text) {
    switch (byte) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += byte;
    }
  }
  return out;
}

}  // namespace printer
