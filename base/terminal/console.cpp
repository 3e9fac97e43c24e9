// Words as C takes them.
#include "base/terminal/console.h"

namespace zentaro::terminal {

std::vector<char*> argumentVector(std::vector<std::string>& words) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  return arguments;
}

}  // namespace zentaro::terminal
