// Terminals of POSIX, where everything is UTF-8 already.
#include "base/terminal/console.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace zentaro::terminal {

bool isTerminal(Stream stream) { return ::isatty(static_cast<int>(stream)) != 0; }

std::size_t terminalColumns() {
  winsize size{};
  return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool hasColours() {
  const char* terminal = std::getenv("TERM");
  return terminal != nullptr && std::string_view(terminal) != "dumb" && isTerminal(Stream::Output);
}

std::string accountLanguage() { return {}; }

Utf8Console::Utf8Console() = default;
// NOLINTNEXTLINE(performance-trivially-destructible): on Windows it gives the code pages back
Utf8Console::~Utf8Console() = default;

std::vector<std::string> commandLineWords(int count, char** words) { return {words, words + count}; }

bool waitForInput(int milliseconds) {
  pollfd watched{STDIN_FILENO, POLLIN, 0};
  return ::poll(&watched, 1, milliseconds) > 0;
}

}  // namespace zentaro::terminal
