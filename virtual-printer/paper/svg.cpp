// Drawing of one sheet. Every character stands in a column of its own, whatever font the viewer has.
#include "virtual-printer/paper/svg.h"

namespace virtual_printer {
namespace {

constexpr int columnTenths = 72;  // width of a column in tenths of a pixel
constexpr int largeColumnTenths = 96;
constexpr std::size_t largeColumns = paperColumns * columnTenths / largeColumnTenths - 1;
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
    case SheetKind::ChequeFace: return {"#edf4ea", "#7f9f78", 190};
    case SheetKind::ChequeBack: return {"#f3f0e6", "#a89b76", 190};
    case SheetKind::Roll: break;
  }
  return {"#fffefa", "#d8d4c8", 0};
}

int heightOf(const Line& line) {
  if (line.style == LineStyle::Cut) return 0;
  return line.style == LineStyle::Title ? tallLineHeight : lineHeight;
}

std::string number(int value) { return std::to_string(value); }

std::string attribute(const char* name, std::string_view value) {
  return " " + std::string{name} + "=\"" + std::string{value} + "\"";
}

std::string pixels(std::size_t columns, int tenthsEach) {
  const auto tenths = static_cast<int>(columns) * tenthsEach;
  return number(tenths / 10) + "." + number(tenths % 10);
}

// A title is larger, as long as its line has room for larger columns.
bool isLarge(const Line& line) {
  const std::size_t taken = columnsOf(line.left) + columnsOf(line.middle) + columnsOf(line.right);
  return line.style == LineStyle::Title && taken <= largeColumns;
}

std::string textElement(std::string_view text, const char* anchor, int x, int y, const Line& line) {
  if (text.empty()) return {};
  std::string element = "<text" + attribute("x", number(x)) + attribute("y", number(y));
  element += attribute("text-anchor", anchor);
  element +=
      attribute("textLength", pixels(columnsOf(text), isLarge(line) ? largeColumnTenths : columnTenths));
  element += attribute("lengthAdjust", "spacingAndGlyphs");
  if (isLarge(line)) element += attribute("font-size", "16");
  if (line.style == LineStyle::Title || line.style == LineStyle::Bold)
    element += attribute("font-weight", "bold");
  if (line.style == LineStyle::Faint) element += attribute("fill", "#777");
  return element + ">" + escaped(text) + "</text>\n";
}

std::string lineElements(const Line& line, int width, int y) {
  if (line.style == LineStyle::Cut) return {};
  if (line.style == LineStyle::Rule)
    return "<path" +
           attribute("d", "M" + number(margin) + " " + number(y - 5) + "H" + number(width - margin)) +
           attribute("stroke", "#55555c") + attribute("stroke-dasharray", "4 3") + "/>\n";
  return textElement(line.left, "start", margin, y, line) +
         textElement(line.middle, "middle", width / 2, y, line) +
         textElement(line.right, "end", width - margin, y, line);
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

// A shape with its shadow, which is the same shape, blurred by hand: not every viewer knows filters.
std::string withShadow(const std::string& shape, const std::string& paint) {
  std::string elements;
  for (int depth = 4; depth >= 1; --depth)
    elements += "<" + shape + attribute("transform", "translate(0," + number(depth) + ")") +
                attribute("fill", "#000") + attribute("fill-opacity", ".06") + "/>\n";
  return elements + "<" + shape + paint + "/>\n";
}

std::string outline(const Sheet& sheet, int width, int height) {
  const Look look = lookOf(sheet.kind);
  const std::string paint = attribute("fill", look.paper) + attribute("stroke", look.edge);
  if (sheet.kind == SheetKind::Roll)
    return withShadow("path" + attribute("d", stripPath(width, height)), paint);
  const auto box = [&](int inset, const char* radius) {
    return "rect" + attribute("x", number(inset)) + attribute("y", number(inset)) +
           attribute("width", number(width - 2 * inset)) + attribute("height", number(height - 2 * inset)) +
           attribute("rx", radius);
  };
  return withShadow(box(0, "6"), paint) + "<" + box(7, "3") + attribute("fill", "none") +
         attribute("stroke", look.edge) + attribute("stroke-dasharray", "1 2") + "/>\n";
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
    content += lineElements(line, width, y - (line.style == LineStyle::Title ? 8 : 4));
  }
  return {width, height, content};
}

std::string escaped(std::string_view text) {
  std::string out;
  for (const char byte : text) {
    switch (byte) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      default: out += byte;
    }
  }
  return out;
}

}  // namespace virtual_printer
