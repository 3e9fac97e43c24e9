// Questions with yes and no.
#include "tools/setup/questions.h"

#include <array>
#include <iostream>

#include "base/terminal/language.h"
#include "text/ascii.h"
#include "text/trimming.h"

namespace zentaro::tools {

bool Questions::confirm(const std::string& question) const {
  if (mode_ != Mode::Ask) return mode_ == Mode::Yes;
  std::cout << "  ? " << question << terminal::say(" [s/N] ", " [y/N] ") << std::flush;
  std::string line;
  std::getline(std::cin, line);
  constexpr std::array<std::string_view, 5> affirmations{"s", "si", "sí", "y", "yes"};
  const std::string_view answer = withoutWhiteSpace(std::string_view(line));
  for (const std::string_view word : affirmations)
    if (equalIgnoringCase(answer, word)) return true;
  return false;
}

}  // namespace zentaro::tools
