// The command `zentaro`.
#include "base/system/console.h"
#include "tools/commands.h"

// NOLINTNEXTLINE(bugprone-exception-escape): what no command catches is a fault of the program, and ends it
int main(int argc, char** argv) {
  const zentaro::system::Utf8Console console;
  std::vector<std::string> words = zentaro::system::commandLineWords(argc, argv);
  return zentaro::tools::runCommandLine(argc, zentaro::system::argumentVector(words).data());
}
