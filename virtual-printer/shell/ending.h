// What asks the program to end: a signal, or the console that is closed.
#pragma once

#include "virtual-printer/line/wake.h"

namespace virtual_printer {

/// While it lives, such a request rings the bell instead of ending the process. Only one at a time.
class Ending {
 public:
  explicit Ending(const Wake& wake);
  Ending(const Ending&) = delete;
  Ending& operator=(const Ending&) = delete;
  ~Ending();

  static bool isRequested();
};

}  // namespace virtual_printer
