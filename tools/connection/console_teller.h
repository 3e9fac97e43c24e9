// What happens on a line and in a sale, on the terminal: progress on standard output, everything else on standard error.
#pragma once

#include <iostream>

#include "till/words/teller.h"

namespace zentaro::tools {

enum class Progress { Shown, Hidden };

class ConsoleTeller : public till::Teller {
 public:
  explicit ConsoleTeller(Progress progress = Progress::Shown)
      : Teller(
            [progress](std::string_view text) {
              if (progress == Progress::Shown) std::cout << text << std::flush;
            },
            [](std::string_view text) { std::cerr << text << std::flush; }) {}
};

}  // namespace zentaro::tools
