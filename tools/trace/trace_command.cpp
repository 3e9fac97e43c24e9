// Reads a trace file and shows it, or answers from it.
#include "tools/trace/trace_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "base/files/read_input.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "tools/show/guarded.h"
#include "tools/trace/replay.h"
#include "tools/trace/trace_text.h"

namespace zentaro::tools {

namespace {

struct TraceOptions {
  std::string file;
  bool isReplay = false;
};

int runTrace(const TraceOptions& options) {
  const Trace trace = parseTrace(base::readInput(options.file));
  const std::vector<Exchange> exchanges = exchangesOf(trace.records);
  if (options.isReplay && exchanges.empty())
    throw std::runtime_error(terminal::say("{}: no hay ninguna orden que responder en esta traza",
                                           "{}: there is no command to be answered in this trace",
                                           {terminal::harmless(options.file)}));
  if (options.isReplay) replay(Script(exchanges));
  std::cout << traceText(trace);
  return trace.malformed.empty() ? exitDone : exitRefused;
}

}  // namespace

void addTraceCommand(CLI::App& app, int& status) {
  const auto options = std::make_shared<TraceOptions>();
  CLI::App* command = app.add_subcommand(
      "trace", terminal::say("Descifra un archivo de traza, o responde como la impresora de la traza",
                             "Decode a trace file, or replay it as a scripted printer"));
  command
      ->add_option(terminal::say("ARCHIVO", "FILE"), options->file,
                   terminal::say("Una traza; - para la entrada estándar", "A trace; - for standard input"))
      ->required()
      ->type_name("");
  command->add_flag(
      "--replay", options->isReplay,
      terminal::say("Responde como la impresora de la traza", "Answer like the printer in the trace"));
  command->footer(terminal::say(
      "Estado de salida: 0 mostrada, 1 mostrada, pero hay líneas que no se entienden,\n"
      "2 no se pudo leer el archivo.",
      "Exit status: 0 shown, 1 shown, but lines could not be read, 2 the file could not be read."));
  command->callback([options, &status] { status = guarded([&] { return runTrace(*options); }); });
}

}  // namespace zentaro::tools
