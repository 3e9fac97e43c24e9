// Reading of standard input.
#include "virtual-printer/shell/standard_input.h"

#include <unistd.h>

#include <array>
#include <iostream>

#include "base/terminal/harmless.h"
#include "virtual-printer/line/host_line.h"

namespace printer {

void StandardInput::watch(std::vector<pollfd>& watched) const {
  if (isOpen_) watched.push_back({STDIN_FILENO, POLLIN, 0});
}

void StandardInput::serve(const std::vector<pollfd>& polled) {
  if (!isOpen_ || !sawSomething(polled, STDIN_FILENO)) return;
  std::array<char, 1024> buffer{};
  const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
  isOpen_ = count > 0;
  if (!isOpen_) return;
  for (const std::string& line : lines_.feed({buffer.data(), static_cast<std::size_t>(count)}))
    std::cerr << zentaro::terminal::harmlessLines(reply_(line)) + "\n";
}

}  // namespace printer
