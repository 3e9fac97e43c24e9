// Becomes the program zentaro-printer.
#include "printer/printer_command.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "common/child_process.h"
#include "common/guarded.h"

namespace zentaro::tools {

namespace {

bool asksForPage(const std::vector<std::string>& words) {
  const auto isMeant = [](const std::string& word) { return word == "--web" || word.starts_with("--web="); };
  return std::any_of(words.begin(), words.end(), isMeant) &&
         std::find(words.begin(), words.end(), "--open") == words.end();
}

int become(std::vector<std::string> words) {
  const std::string program = companionProgram("zentaro-printer");
  if (asksForPage(words)) words.emplace_back("--open");
  words.insert(words.begin(), program);
  ::execvp(program.c_str(), argumentVector(words).data());
  throw std::runtime_error("cannot start " + program + ": " + std::strerror(errno));
}

}  // namespace

void addPrinterCommand(CLI::App& app, int& status) {
  CLI::App* command =
      app.add_subcommand("printer", "Run the virtual printer; \"zentaro printer --help\" lists its options");
  command->set_help_flag();  // all options are those of zentaro-printer
  command->prefix_command();
  command->callback([command, &status] { status = guarded([&] { return become(command->remaining()); }); });
}

}  // namespace zentaro::tools
