// The paper as the page shows it: each sheet drawn anew while it grows.
#pragma once

#include <chrono>
#include <deque>

#include "virtual-printer/paper/roll.h"
#include "virtual-printer/web/feed.h"

namespace virtual_printer {

class Sheets final : public PaperWatcher {
 public:
  explicit Sheets(Feed& feed) : feed_{feed} {}

  void printed(const Sheet& sheet, const Line& line) override;
  void finished(const std::deque<Sheet>& sheets) override;
  /// Draws what has been printed since the last time.
  void draw(std::chrono::milliseconds now);

 private:
  void publish(int id, const Sheet& sheet, bool isDone);

  Feed& feed_;
  Sheet current_;  // a copy of the sheet in work
  int currentId_ = 1, lastId_ = 1;
  bool isDrawn_ = true;
  std::chrono::milliseconds drawnAt_{0};
};

}  // namespace virtual_printer
