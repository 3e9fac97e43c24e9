// The command `zentaro`.
#include "base/terminal/console.h"
#include "tools/commands.h"

// NOLINTNEXTLINE(bugprone-exception-escape): what no command catches is a fault of the program, and ends it
int main(int argc, char** argv) {
  const zentaro::terminal::Utf8Console console;
  std::vector<std::string> words = zentaro::terminal::commandLineWords(argc, argv);
  return zentaro::tools::runCommandLine(argc, zentaro::terminal::argumentVector(words).data());
}
