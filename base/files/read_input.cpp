// Reading a file as a whole.
#include "base/files/read_input.h"

#include <cerrno>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "base/files/paths.h"
#include "base/system/error_text.h"

namespace zentaro::base {

std::string readInput(const std::string& path) {
  const bool isInput = path == "-";
  std::ifstream file;
  errno = 0;
  if (!isInput) file.open(files::pathOf(path), std::ios::binary);
  std::ostringstream text;
  text << (isInput ? std::cin.rdbuf() : file.rdbuf());
  // A folder can be opened, but not read; nothing comes out of an empty file either, but without an error.
  const bool isRead = isInput || (file.is_open() && !(text.fail() && errno != 0));
  if (!isRead) throw std::runtime_error(path + ": " + system::errorText(errno));
  return text.str();
}

}  // namespace zentaro::base
