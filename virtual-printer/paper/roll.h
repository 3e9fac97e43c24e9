// The paper that has left the printer, sheet by sheet, and who watches it come out.
#pragma once

#include <deque>

#include "virtual-printer/paper/sheet.h"

namespace virtual_printer {

class PaperWatcher {
 public:
  PaperWatcher() = default;
  PaperWatcher(const PaperWatcher&) = delete;
  PaperWatcher& operator=(const PaperWatcher&) = delete;
  virtual ~PaperWatcher() = default;
  virtual void printed(const Sheet& sheet, const Line& line) = 0;
  virtual void finished(const std::deque<Sheet>& sheets) = 0;
};

class Roll {
 public:
  // Older sheets are dropped, so that a printer that runs for weeks does not grow.
  static constexpr std::size_t keptSheets = 100;

  void watch(PaperWatcher& watcher) { watchers_.push_back(&watcher); }

  /// Prints on the sheet in work, which begins with its first line.
  void print(const Lines& lines);
  /// Ends the sheet in work, if there is one.
  void cut(const std::string& title);
  /// A sheet of another station, beside the one in work.
  void printApart(const Sheet& sheet);

  const std::deque<Sheet>& sheets() const { return sheets_; }
  std::size_t printedLines() const { return printedLines_; }

 private:
  void put(Sheet& sheet, Line line);
  void finish(Sheet sheet);

  std::vector<PaperWatcher*> watchers_;
  Sheet current_;
  std::deque<Sheet> sheets_;
  std::size_t printedLines_ = 0;
};

}  // namespace virtual_printer
