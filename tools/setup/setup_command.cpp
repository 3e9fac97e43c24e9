// The options of the run.
#include "tools/setup/setup_command.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "base/terminal/command_line.h"
#include "base/terminal/language.h"
#include "tools/setup/setup.h"
#include "tools/show/guarded.h"

namespace zentaro::tools {

using terminal::say;

void addSetupCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<SetupOptions>();
  CLI::App* command = app.add_subcommand(
      say("instalar", "setup"),
      say("Busca la impresora y la deja lista para usar", "Find the printer and make it ready to be used"));
  command->alias(say("setup", "instalar"));
  command
      ->add_option(
          "--device", options->devices,
          say("Solo este dispositivo; varias veces si se quiere", "This device only; may be given again"))
      ->check(terminal::notEmpty())
      ->type_name(say("RUTA", "PATH"));
  command->add_flag("--yes", options->isYes,
                    say("Sí a todo, en los dispositivos que nombra --device; los demás no se tocan",
                        "Yes to everything, for devices that --device names; others are left alone"));
  command->add_flag("--test-sheet", options->wantsTestSheet,
                    say("Imprime una hoja de prueba, no fiscal", "Print a test sheet, not fiscal"));
  command->add_flag("--json", options->isJson,
                    say("Lo encontrado como JSON; sin --yes no pregunta ni cambia nada",
                        "What was found as JSON; without --yes nothing is asked or changed"));
  command
      ->add_option("--report", options->reportFile,
                   say("Guarda un informe para quien ayuda", "Keep a report for whoever helps"))
      ->type_name(say("ARCHIVO", "FILE"));
  command->footer(say("Estado de salida: 0 hay una impresora, 1 no apareció ninguna, 2 no se pudo mirar.",
                      "Exit status: 0 there is a printer, 1 none was found, 2 it could not look."));
  command->callback([options, &status] { status = guarded([&] { return Setup(*options).run(); }); });
}

}  // namespace zentaro::tools
