// Who watches the paper: the roll on standard output, and the file that is rewritten after each document.
#pragma once

#include <string>

#include "virtual-printer/paper/roll.h"
#include "virtual-printer/shell/notices.h"
#include "virtual-printer/shell/outlet.h"

namespace virtual_printer {

class RollOnScreen final : public PaperWatcher {
 public:
  /// A roll that nobody reads, or can read any more, is told once; printing goes on.
  void printed(const Sheet& sheet, const Line& line) override;
  void finished(const std::deque<Sheet>&) override {}

 private:
  Outlet outlet_{1};
  Trouble trouble_;
};

class PaperFile final : public PaperWatcher {
 public:
  /// The form follows the ending: .txt, .svg or .html. Writes the file at once, so that a path that cannot be
  /// written fails before anything is printed. Throws std::runtime_error.
  explicit PaperFile(std::string path);

  void printed(const Sheet&, const Line&) override {}
  /// A file that cannot be written any more is told once; printing goes on.
  void finished(const std::deque<Sheet>& sheets) override;

 private:
  using Renderer = std::string (*)(const std::deque<Sheet>&);

  std::string path_;
  Renderer render_;
  Trouble trouble_;
};

}  // namespace virtual_printer
