// Prints a closing and shows the record of its figures. A Z whose answer is lost is judged by the number of the
// last Z, because a second one would close an empty day and cannot be taken back.
#include "tools/cierre/cierre_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <optional>

#include "automation/automation_error.h"
#include "base/terminal/command_line.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "tools/show/guarded.h"
#include "tools/show/report.h"
#include "zentaro.h"

namespace zentaro::tools {

using terminal::say;

namespace {

constexpr int exitNotPrinted = 3, exitUnknown = 4;

struct CierreOptions {
  ReportOptions report;
  std::string closing;
};

/// The number of the last Z, by the status that got line and printer in step; nothing when it is not in there.
std::optional<int> lastZ(Connection& connection) {
  connection.line().getInStep();
  try {
    statusN status;
    status.LoadFromResponse(connection.printer().getResponse(0));
    return status.UltimoCierreZ();
  } catch (const AutomationError&) {
    return std::nullopt;
  }
}

int tellVerdict(int status, std::string_view spanish, std::string_view english,
                const std::string& number = "") {
  std::cerr << say(spanish, english, {number}) << '\n';
  return status;
}

int judgeLostZ(const std::optional<int>& before, Connection& connection) {
  std::optional<int> now;
  try {
    now = lastZ(connection);
  } catch (const std::runtime_error& error) {
    std::cerr << "zentaro: " << error.what() << '\n';
  }
  if (before && now && *now == *before + 1) {
    return tellVerdict(
        exitDone, "El cierre Z se imprimió con el número {}; sus montos no llegaron. No cierre otra vez.",
        "The Z closing was printed as number {}; its figures did not arrive. Do not close again.",
        std::to_string(*now));
  }
  if (before && now == before)
    return tellVerdict(exitNotPrinted, "El cierre Z no se imprimió.", "The Z closing was not printed.");
  return tellVerdict(
      exitUnknown,
      "No se sabe si el día ya está cerrado. Mire el papel, y UltimoCierreZ de \"zentaro status\", "
      "antes de cerrar otra vez.",
      "The day may be closed already. Look at the paper, and at UltimoCierreZ of \"zentaro status\", "
      "before you close again.");
}

/// The record, or nothing when the printer refuses, or the answer is lost or cannot be loaded.
Object close(Connection& connection, int closing, bool& isLost) {
  CZentaro& printer = connection.printer();
  const auto lose = [&] {
    isLost = true;
    connection.line().lostAnswer();
    return Object();
  };
  try {
    std::vector<Variant> arguments{closing};
    const Object record = connection.object().call("PerformReturnCierre", arguments).object();
    if (!answersLastCommand(printer)) return lose();
    if (record.isNothing()) sayWhy("PerformReturnCierre", printer);
    const bool isRefused = printer.nEnvironmentError == ENVERR_STATUS;
    return record.isNothing() && !isRefused ? lose() : record;
  } catch (const AutomationError& error) {  // behind the command: from a trace, or its figures cannot be read
    std::cerr << "zentaro: PerformReturnCierre: " << terminal::harmless(error.what()) << '\n';
    return lose();
  }
}

int runCierre(const CierreOptions& options) {
  Connection connection(options.report.port);
  connection.printer().verifyCheckSum = true;
  connection.line().startAnywhere();
  const bool isZ = options.closing == "z";
  const std::optional<int> before = lastZ(connection);
  connection.line().persist();
  bool isLost = false;
  const Object record = close(connection, isZ ? CIERRE_Z : CIERRE_X, isLost);
  if (isLost && isZ) return judgeLostZ(before, connection);
  if (isLost)
    return tellVerdict(
        exitRefused,
        "El cierre X puede estar impreso; sus montos no llegaron. Pedirlo otra vez no cambia nada.",
        "The X closing may be printed; its figures did not arrive. Asking again changes nothing.");
  if (record.isNothing()) return exitRefused;
  showRecords({record}, options.report, connection);
  return exitDone;
}

}  // namespace

void addCierreCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<CierreOptions>();
  CLI::App* command = addReport(app, options->report, "cierre",
                                std::string(say("Imprime el cierre X o Z y muestra sus montos",
                                                "Print the X or Z closing and show its figures")));
  command
      ->add_option(std::string(say("CIERRE", "CLOSING")), options->closing,
                   std::string(say("x lee los montos del día, z termina el día",
                                   "x reads the day's figures, z ends the day")))
      ->required()
      ->check(terminal::oneOf({"x", "z"}))
      ->transform([](const std::string& closing) { return CLI::detail::to_lower(closing); });
  command->footer(
      std::string(say("Estado de salida: 0 impreso, 1 rechazado, 2 no se intentó, 3 el Z no se imprimió, "
                      "4 no se sabe.",
                      "Exit status: 0 printed, 1 refused, 2 it could not be tried, 3 the Z was not printed, "
                      "4 unknown.")));
  command->callback([options, &status] { status = guarded([&] { return runCierre(*options); }); });
}

}  // namespace zentaro::tools
