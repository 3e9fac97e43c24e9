// Where the demo shows calls and paper: side by side on a wide terminal, one below the other elsewhere.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/terminal/colour.h"

namespace zentaro::tools {

class Stage {
 public:
  /// How wide the calls are, which stand to the left of the paper where there is room for both.
  Stage();

  void begin(const std::string& title);
  /// A line of a call; a long one is broken.
  void show(terminal::Colour colour, std::string_view text);
  /// The paper that came out since begin().
  void end(std::string_view paper);

 private:
  struct Line {
    terminal::Colour colour;
    std::string text;
  };

  std::size_t columns_;
  bool isWide_;
  std::vector<Line> waiting_;  // on a wide terminal, for the paper beside them
};

}  // namespace zentaro::tools
