// Reads a trace file and shows it, or answers from it.
#include "trace/trace_command.h"

#include <iostream>
#include <memory>

#include "common/guarded.h"
#include "common/read_input.h"
#include "trace/replay.h"
#include "trace/trace_text.h"

namespace zentaro::tools {

namespace {

struct Options {
  std::string file;
  bool isReplay = false;
};

int run(const Options& options) {
  const Trace trace = parseTrace(readInput(options.file));
  if (options.isReplay) replay(Script(exchangesOf(trace.records)));
  std::cout << traceText(trace);
  return trace.malformed.empty() ? exitDone : exitRefused;
}

}  // namespace

void addTraceCommand(CLI::App& app, int& status) {
  const auto options = std::make_shared<Options>();
  CLI::App* command = app.add_subcommand("trace", "Decode a trace file, or replay it as a scripted printer");
  command
      ->add_option("FILE", options->file,
                   "A trace of the printer object or of the driver; - for standard input")
      ->required();
  command->add_flag("--replay", options->isReplay,
                    "Answer like the printer in the trace, on the device that is named on standard output");
  command->footer(
      "Exit status: 0 shown, 1 shown, but lines could not be read, 2 the file could not be read.");
  command->callback([options, &status] { status = guarded([&] { return run(*options); }); });
}

}  // namespace zentaro::tools
