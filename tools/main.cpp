// The command `zentaro`.
#include "commands.h"

int main(int argc, char** argv) {
  CLI::App app{"Drives a fiscal printer over a serial line.", "zentaro"};
  app.require_subcommand(1);
  int status = 0;
  zentaro::tools::addCommands(app, status);
  CLI11_PARSE(app, argc, argv);
  return status;
}
