// The list of subcommands, in the order in which the help shows them.
#include "tools/commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <utility>

#include "base/system/interruption.h"
#include "base/terminal/command_line.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/nearest.h"
#include "base/terminal/screen.h"
#include "tools/call/call_command.h"
#include "tools/cierre/cierre_command.h"
#include "tools/demo/demo_command.h"
#include "tools/doctor/doctor_command.h"
#include "tools/host/host_command.h"
#include "tools/hurried_words.h"
#include "tools/members/members_command.h"
#include "tools/printer/printer_command.h"
#include "tools/sale/sale_command.h"
#include "tools/serve/serve_command.h"
#include "tools/settings/settings_command.h"
#include "tools/setup/setup_command.h"
#include "tools/show/guarded.h"
#include "tools/status/status_command.h"
#include "tools/today/today_command.h"
#include "tools/trace/trace_command.h"

namespace zentaro::tools {

using terminal::say;

namespace {

/// Adds a subcommand. When it is the one that was asked for, its callback stores the exit status.
using AddCommand = void (*)(CLI::App& app, int& status);

constexpr std::array<AddCommand, 14> commands{
    addDemoCommand,      //
    addPrinterCommand,   //
    addCallCommand,      //
    addStatusCommand,    //
    addCierreCommand,    //
    addTodayCommand,     //
    addSaleCommand,      //
    addServeCommand,     //
    addTraceCommand,     //
    addMembersCommand,   //
    addSettingsCommand,  //
    addDoctorCommand,    //
    addSetupCommand,     //
    addHostCommand,      //
};

// The subcommand that was meant, or nothing when none is near.
std::string meant(const CLI::App& app, const std::string& word) {
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
    names.push_back(command->get_name());
  return terminal::nearest(word, names);
}

std::string unknownSubcommand(const CLI::App& app, const std::string& word) {
  const std::string near = meant(app, word);
  const std::string command = app.get_parent() == nullptr ? "zentaro" : "zentaro " + app.get_name();
  const std::string text = say("zentaro: no hay una orden \"{}\"", "zentaro: unknown subcommand \"{}\"",
                               {terminal::harmless(word)});
  if (!near.empty())
    return text + say("; ¿quiso decir \"{} {}\"?\n", "; did you mean \"{} {}\"?\n", {command, near});
  return text + say(": \"{} --help\" los muestra todos\n", ": \"{} --help\" lists all\n", {command});
}

// The parser itself would only say that a subcommand is missing.
std::string explain(const CLI::App* app, const CLI::Error& error) {
  const CLI::App* last = app;
  while (!last->get_subcommands().empty()) last = last->get_subcommands().front();
  const std::vector<std::string> rest = app->remaining(true);
  if (last->get_require_subcommand_min() == 0 || rest.empty()) return terminal::explain(app, error);
  if (rest.front().starts_with("-"))
    return terminal::explain(app, CLI::ExtrasError({rest.rbegin(), rest.rend()}));  // it joins them backwards
  return unknownSubcommand(*last, rest.front());
}

// "zentaro help sale" is "zentaro sale --help".
void addHelp(CLI::App& app, int& status) {
  const auto name = std::make_shared<std::string>();
  CLI::App* help = app.add_subcommand("help", say("Explica una orden", "Explain a subcommand"));
  help->add_option(say("ORDEN", "SUBCOMMAND"), *name,
                   say("Su nombre; sin él se explica zentaro", "Its name; without one, zentaro"))
      ->type_name("");
  help->callback([&app, &status, name] {
    const auto named =
        app.get_subcommands([&](const CLI::App* command) { return command->get_name() == *name; });
    if (named.empty() && !name->empty()) {
      std::cerr << unknownSubcommand(app, *name);
      status = exitFailed;
      return;
    }
    // Asked for its help, the program would explain the subcommand that was parsed, which is this one.
    std::cout << (named.empty() ? app.get_formatter()->make_help(&app, "zentaro", CLI::AppFormatMode::Normal)
                                : named.front()->help("zentaro"));
  });
}

void nameGroupsBelow(CLI::App& app) {
  for (CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    command->group(say("Órdenes", "Subcommands"));
    CLI::Option* help = command->get_help_ptr();  // printer hands its own over
    if (help != nullptr) help->group(say("Opciones", "Options"));
    nameGroupsBelow(*command);
  }
}

void addCommands(CLI::App& app, int& status) {
  app.require_subcommand(1);
  app.fallthrough();
  app.set_version_flag("--version", "zentaro " ZENTARO_VERSION,
                       say("Muestra la versión", "Show the version"));
  app.failure_message(explain);
  for (const AddCommand add : commands) add(app, status);
  addHelp(app, status);
  nameGroupsBelow(app);
}

}  // namespace

int runCommandLine(int argc, char** argv) {
  base::Interruption::letWritingFail();
  const terminal::FittedOutput fitted;
  std::vector<std::string> words = meantWords({argv + std::min(argc, 1), argv + argc});
  terminal::chooseLanguage(argc, argv);
  CLI::App app{
      say("Maneja una impresora fiscal por una línea serial.", "Drives a fiscal printer over a serial line."),
      "zentaro"};
  terminal::speakTheLanguage(app);
  int status = 0;
  addCommands(app, status);
  try {
    std::ranges::reverse(words);  // as the parser wants them
    app.parse(std::move(words));
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? exitDone : exitFailed;
  }
  return status;
}

}  // namespace zentaro::tools
