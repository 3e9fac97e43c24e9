// Words as C takes them.
#include "base/system/console.h"

namespace zentaro::system {

std::vector<char*> argumentVector(std::vector<std::string>& words) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  return arguments;
}

}  // namespace zentaro::system
