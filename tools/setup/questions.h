// Asking a person before each change.
#pragma once

#include <string>

namespace zentaro::tools {

class Questions {
 public:
  enum class Mode {
    Ask,  // the person at the terminal decides; the end of the input is a no
    Yes,  // the command line has decided
    No    // nothing is asked, and nothing done
  };

  explicit Questions(Mode mode) : mode_(mode) {}

  /// Whether to do it.
  bool confirm(const std::string& question) const;

 private:
  Mode mode_;
};

}  // namespace zentaro::tools
