// Keeping and announcing what is printed.
#include "paper/roll.h"

#include <utility>

namespace printer {

void Roll::print(const Lines& lines) {
  for (const Line& line : lines) {
    current_.lines.push_back(line);
    ++printedLines_;
    for (PaperWatcher* watcher : watchers_) watcher->printed(current_, line);
  }
}

void Roll::cut(std::string title) {
  if (current_.lines.empty()) return;
  print({{LineStyle::cut, {}, {}, {}}});
  current_.title = std::move(title);
  keep(std::exchange(current_, {}));
}

void Roll::printApart(Sheet sheet) {
  sheet.lines.push_back({LineStyle::cut, {}, {}, {}});
  printedLines_ += sheet.lines.size();
  for (PaperWatcher* watcher : watchers_)
    for (const Line& line : sheet.lines) watcher->printed(sheet, line);
  keep(std::move(sheet));
}

void Roll::keep(Sheet sheet) {
  sheets_.push_back(std::move(sheet));
  if (sheets_.size() > keptSheets) sheets_.pop_front();
  for (PaperWatcher* watcher : watchers_) watcher->finished(sheets_);
}

}  // namespace printer
