// Becomes the program zentaro-printer, or talks to one that runs.
#include "tools/printer/printer_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <stdexcept>

#include "base/system/child_process.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "tools/printer/tell.h"
#include "tools/show/guarded.h"

namespace zentaro::tools {

namespace {

using terminal::say;

bool asksForPage(const std::vector<std::string>& words) {
  const auto isMeant = [](const std::string& word) { return word == "--web" || word.starts_with("--web="); };
  return std::any_of(words.begin(), words.end(), isMeant) &&
         std::find(words.begin(), words.end(), "--open") == words.end();
}

[[noreturn]] void become(std::vector<std::string> words) {
  if (asksForPage(words)) words.emplace_back("--open");
  words.insert(words.begin(), base::companionProgram("zentaro-printer"));
  base::becomeProgram(std::move(words), "ZENTARO_LANG", say("es", "en"));
}

struct Told {
  std::string socket;
  std::vector<std::string> words;
};

int tellPrinter(const Told& told) {
  std::string line;
  for (const std::string& word : told.words) line += (line.empty() ? "" : " ") + word;
  if (line.find('\n') != std::string::npos)
    throw std::runtime_error(say("se dice una línea a la vez", "one line is told at a time"));
  const std::string reply = tell(told.socket, line);
  std::cout << terminal::harmlessLines(reply);
  const std::size_t last = reply.rfind('\n', reply.size() - 2);
  return reply.compare(last == std::string::npos ? 0 : last + 1, 2, "ok") == 0 ? exitDone : exitRefused;
}

}  // namespace

void addPrinterCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand(
      "printer", say("La impresora virtual; \"zentaro printer --help\" dice sus opciones",
                     "Run the virtual printer; \"zentaro printer --help\" lists its options"));
  command->set_help_flag();  // all options are those of zentaro-printer
  command->prefix_command();
  command->fallthrough(false);  // and none of them is tried on zentaro
  auto told = std::make_shared<Told>();
  CLI::App* telling =
      command->add_subcommand("tell", say("Dice una línea de control a una impresora en marcha",
                                          "Tell a running virtual printer a control line"));
  telling->set_help_flag("-h,--help", say("Muestra esta ayuda", "Show this help"));
  telling->add_option("SOCKET", told->socket, say("Lo que dijo --control", "What --control named"))
      ->required()
      ->type_name("");
  telling->add_option(say("LÍNEA", "LINE"), told->words, "fault \"lose-answer on close\", status, help ...")
      ->required()
      ->type_name("");
  telling->callback([told, &status] { status = guarded([&] { return tellPrinter(*told); }); });
  command->callback([command, &status] {
    if (command->get_subcommands().empty()) status = guarded([&]() -> int { become(command->remaining()); });
  });
}

}  // namespace zentaro::tools
