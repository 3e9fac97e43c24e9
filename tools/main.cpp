// The command `zentaro`.
#include "commands.h"
#include "terminal/command_line.h"
#include "terminal/language.h"
#include "terminal/screen.h"

// NOLINTNEXTLINE(bugprone-exception-escape): what no command catches is a fault of the program, and ends it
int main(int argc, char** argv) {
  using zentaro::terminal::say;
  const zentaro::terminal::FittedOutput fitted;
  zentaro::terminal::chooseLanguage(argc, argv);
  CLI::App app{std::string(say("Maneja una impresora fiscal por una línea serial.",
                               "Drives a fiscal printer over a serial line.")),
               "zentaro"};
  zentaro::terminal::speakTheLanguage(app);
  int status = 0;
  zentaro::tools::addCommands(app, status);
  CLI11_PARSE(app, argc, argv);
  return status;
}
