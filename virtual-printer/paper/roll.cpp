// Keeping and announcing what is printed.
#include "virtual-printer/paper/roll.h"

#include <utility>

#include "virtual-printer/paper/clean_text.h"

namespace virtual_printer {
namespace {

// At the head and at the foot of every sheet, whoever prints it and however it is looked at: what comes out of
// this printer is no fiscal document.
Line markLine() { return {LineStyle::Bold, {}, {}, "PRUEBA - SIN VALIDEZ FISCAL"}; }

Line clean(const Line& line) {
  return {line.style, cleanText(line.left), cleanText(line.right), cleanText(line.middle)};
}

}  // namespace

void Roll::print(const Lines& lines) {
  if (lines.empty()) return;
  if (current_.lines.empty()) put(current_, markLine());
  for (const Line& line : lines) put(current_, clean(line));
}

void Roll::cut(const std::string& title) {
  if (current_.lines.empty()) return;
  current_.title = cleanText(title);
  finish(std::exchange(current_, {}));
}

void Roll::printApart(const Sheet& sheet) {
  Sheet apart{sheet.kind, cleanText(sheet.title), {}};
  put(apart, markLine());
  for (const Line& line : sheet.lines) put(apart, clean(line));
  finish(std::move(apart));
}

void Roll::put(Sheet& sheet, Line line) {
  sheet.lines.push_back(std::move(line));
  ++printedLines_;
  for (PaperWatcher* watcher : watchers_) watcher->printed(sheet, sheet.lines.back());
}

void Roll::finish(Sheet sheet) {
  put(sheet, markLine());
  put(sheet, {LineStyle::Cut, {}, {}, {}});
  sheets_.push_back(std::move(sheet));
  if (sheets_.size() > keptSheets) sheets_.pop_front();
  for (PaperWatcher* watcher : watchers_) watcher->finished(sheets_);
}

}  // namespace virtual_printer
