// Sheets together on one drawing or page.
#include <algorithm>

#include "virtual-printer/paper/svg.h"

namespace virtual_printer {
namespace {

constexpr int gap = 28;
constexpr int sheetsAcross = 4;

constexpr std::string_view htmlBegin = R"(<!DOCTYPE html>
<html lang="es">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>Zentaro: papel impreso</title>
<style>
body { margin: 0; padding: 28px; background: #dfe3e6; font-family: system-ui, sans-serif; color: #445; }
main { display: flex; flex-wrap: wrap; gap: 28px; align-items: flex-start; justify-content: center; }
figure { margin: 0; }
figcaption { font-size: 13px; letter-spacing: .04em; margin: 0 0 8px 4px; }
</style>
</head>
<body>
<main>
)";
constexpr std::string_view htmlEnd = "</main>\n</body>\n</html>\n";

std::string withUnit(const char* name, int value) {
  return std::string{" "} + name + "=\"" + std::to_string(value) + "\"";
}

}  // namespace

std::string svgBegin(int width, int height) {
  return "<svg xmlns=\"http://www.w3.org/2000/svg\"" + withUnit("width", width) + withUnit("height", height) +
         " viewBox=\"0 0 " + std::to_string(width) + " " + std::to_string(height) +
         "\" font-family=\"'DejaVu Sans Mono','Liberation Mono',Menlo,Consolas,monospace\" font-size=\"12\""
         " fill=\"#26262b\" xml:space=\"preserve\">\n";
}

std::string svgPaper(const std::deque<Sheet>& sheets) {
  std::string content;
  int x = gap;
  int y = gap;
  int right = gap;
  int below = gap;
  int across = 0;
  for (const Sheet& sheet : sheets) {
    if (across++ == sheetsAcross) {
      across = 1;
      x = gap;
      y = below;
    }
    const Drawing drawing = drawSheet(sheet);
    content += "<g transform=\"translate(" + std::to_string(x) + "," + std::to_string(y) + ")\">\n" +
               drawing.content + "</g>\n";
    x += drawing.width + gap;
    right = std::max(right, x);
    below = std::max(below, y + drawing.height + gap);
  }
  return svgBegin(right, below) + "<rect width=\"100%\" height=\"100%\" fill=\"#dfe3e6\"/>\n" + content +
         std::string{svgEnd};
}

std::string htmlPaper(const std::deque<Sheet>& sheets) {
  std::string page{htmlBegin};
  for (const Sheet& sheet : sheets) {
    const Drawing drawing = drawSheet(sheet);
    page += "<figure>\n<figcaption>" + escaped(sheet.title) + "</figcaption>\n" +
            svgBegin(drawing.width, drawing.height + 12) + drawing.content + std::string{svgEnd} +
            "</figure>\n";
  }
  return page + std::string{htmlEnd};
}

}  // namespace virtual_printer
