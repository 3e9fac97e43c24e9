// Prints a closing, shows its figures, and says how it ended.
#include "tools/cierre/cierre_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "base/files/json.h"
#include "base/terminal/command_line.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "interface/library.h"
#include "till/course/closing.h"
#include "till/words/closing_words.h"
#include "tools/connection/known_settings.h"
#include "tools/sale/exit_status.h"
#include "tools/show/guarded.h"
#include "tools/show/report.h"
#include "tools/show/show.h"

namespace zentaro::tools {

using terminal::say;

namespace {

struct CierreOptions {
  ReportOptions report;
  std::string closing;
};

till::CloseOptions closeOptions(const PortOptions& port, till::Observer& observer) {
  till::CloseOptions made;
  made.stop = {base::Interruption::isRequested, say("interrumpido por una señal", "interrupted by a signal")};
  made.observer = &observer;
  made.wait = std::chrono::seconds(port.wait.value_or(0));
  made.keepsBooks = !deviceNamedBy(port).empty();
  made.owner = "cierre";
  made.printerName = port.port ? portKey(*port.port) : port.device;
  made.evenIfUnknown = true;  // a person asks for it, and is told
  return made;
}

Json recordJson(const till::ClosingVerdict& verdict) {
  if (!verdict.figures) return nullptr;
  return valueJson(
      Object(*findClass("ResultadoCierre"), std::make_shared<ResultadoCierre>(*verdict.figures)));
}

int tellVerdict(const till::ClosingVerdict& verdict, const till::SalePlace& place, bool isJson) {
  const int status = exitStatus(verdict);
  if (isJson) {
    Json page{{"ResultadoCierre", recordJson(verdict)}};
    page.update(till::closingJson(verdict, place));
    std::cout << terminal::whole(jsonPage(page)) << std::flush;
    return status;
  }
  std::cout << till::figuresText(verdict) << std::flush;
  std::ostream& output = status == exitDone ? std::cout : std::cerr;
  output << terminal::withCommands(till::closingText(verdict, place)) << std::endl;
  return status;
}

int runCierre(const CierreOptions& options) {
  demandReadableSettings();
  const base::Interruption interruption;
  ConsoleTeller teller(Progress::Hidden);
  const PortOptions& port = options.report.port;
  till::ClosingCourse course(options.closing == "z" ? till::Kind::Z : till::Kind::X,
                             closeOptions(port, teller));
  if (const auto verdict = course.beforePort(deviceNamedBy(port)))
    return tellVerdict(*verdict, {portWordsOf(port)}, options.report.isJson);
  Connection connection(port, {}, Unasked::Nothing, &teller);
  const till::SalePlace place{connection.portWords(), connection.virtualPrinter() != nullptr};
  const till::ClosingVerdict verdict = course.print(connection.printer(), connection.line());
  const int status = tellVerdict(verdict, place, options.report.isJson);
  course.told();
  return status;
}

}  // namespace

void addCierreCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<CierreOptions>();
  CLI::App* command = addReport(
      app, options->report, "cierre",
      say("Imprime el cierre X o Z y muestra sus montos", "Print the X or Z closing and show its figures"));
  command
      ->add_option(
          say("CIERRE", "CLOSING"), options->closing,
          say("x lee los montos del día, z termina el día", "x reads the day's figures, z ends the day"))
      ->required()
      ->check(terminal::oneOf({"x", "z"}))
      ->transform([](const std::string& closing) { return CLI::detail::to_lower(closing); });
  command->footer(
      say("Estado de salida: 0 impreso, 1 rechazado, 2 no se intentó, 3 no impreso, "
          "4 no se sabe.",
          "Exit status: 0 printed, 1 refused, 2 it could not be tried, 3 not printed, "
          "4 unknown."));
  command->callback([options, &status] { status = guarded([&] { return runCierre(*options); }); });
}

}  // namespace zentaro::tools
