// Sheets as SVG documents in JSON.
#include "virtual-printer/web/sheets.h"

#include <nlohmann/json.hpp>

#include "virtual-printer/paper/svg.h"

namespace virtual_printer {
namespace {

using Json = nlohmann::ordered_json;

// A sheet that is longer than a usual ticket is not drawn anew for each of its lines.
constexpr std::size_t longSheet = 200;
constexpr std::chrono::milliseconds longSheetInterval{500};
constexpr int shadow = 6;  // below the paper

const char* kindName(SheetKind kind) {
  switch (kind) {
    case SheetKind::ChequeFace: return "cheque";
    case SheetKind::ChequeBack: return "endorsement";
    case SheetKind::Roll: break;
  }
  return "roll";
}

}  // namespace

void Sheets::printed(const Sheet& sheet, const Line& line) {
  if (sheet.kind != SheetKind::Roll) return;
  current_.lines.push_back(line);
  isDrawn_ = false;
}

void Sheets::finished(const std::deque<Sheet>& sheets) {
  const Sheet& sheet = sheets.back();
  if (sheet.kind != SheetKind::Roll) return publish(++lastId_, sheet, true);
  publish(currentId_, sheet, true);
  current_ = {};
  currentId_ = ++lastId_;
  isDrawn_ = true;
}

void Sheets::draw(std::chrono::milliseconds now) {
  if (isDrawn_) return;
  if (current_.lines.size() > longSheet && now - drawnAt_ < longSheetInterval) return;
  publish(currentId_, current_, false);
  isDrawn_ = true;
  drawnAt_ = now;
}

void Sheets::publish(int id, const Sheet& sheet, bool isDone) {
  const Drawing drawing = drawSheet(sheet);
  const Json json{
      {"id", id},
      {"kind", kindName(sheet.kind)},
      {"title", sheet.title},
      {"done", isDone},
      {"width", drawing.width},
      {"height", drawing.height + shadow},
      {"svg", svgBegin(drawing.width, drawing.height + shadow) + drawing.content + std::string{svgEnd}}};
  feed_.publish("sheet", id, json.dump());
}

}  // namespace virtual_printer
