// The command `zentaro`.
#include "tools/commands.h"

// NOLINTNEXTLINE(bugprone-exception-escape): what no command catches is a fault of the program, and ends it
int main(int argc, char** argv) { return zentaro::tools::runCommandLine(argc, argv); }
