// SIGINT, SIGTERM and SIGHUP while a command talks to a printer, and a reader that goes away.
#pragma once

#include <string>

namespace zentaro::base {

/// While it lives the first of these signals only sets a flag: the command ends what it has begun and says what
/// came of it. The second one writes the last words and ends the process with exit status 4, and with it a virtual
/// printer that it has started. Signals that were ignored before stay ignored. SIGPIPE is ignored, so that a closed standard output
/// never ends a sale. One inside another changes nothing.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  /// From now on a file that may not grow any more fails to be written, and whoever writes knows what to do; the
  /// program does not end by it.
  static void letWritingFail();

  static bool isRequested();

  /// What a second signal writes, prepared because little may be done then; cut at 500 bytes.
  static void setLastWords(const std::string& text);
};

}  // namespace zentaro::base
