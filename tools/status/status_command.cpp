// Shows the records of two status requests.
#include "tools/status/status_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "base/terminal/language.h"
#include "tools/connection/holders.h"
#include "tools/show/guarded.h"
#include "tools/show/report.h"
#include "tools/status/status_words.h"

namespace zentaro::tools {

namespace {

int runStatus(const ReportOptions& options) {
  Connection connection(options.port);
  connection.printer().verifyCheckSum = true;
  connection.line().startAnywhere();
  std::vector<Object> records;
  for (const std::string_view member : {"GetStatusN", "GetStatusHASAR"}) {
    records.push_back(askStatusRecord(connection, member));
    if (records.back().isNothing()) return exitRefused;
  }
  if (!options.isJson) {
    const bool isVirtual = connection.virtualPrinter() != nullptr || isVirtualPrinterOn(connection.device());
    std::cout << statusInWords(records[0], records[1], connection.printer(),
                               isVirtual ? Bits::Known : Bits::Unknown);
  }
  showRecords(records, options, connection);
  return exitDone;
}

}  // namespace

void addStatusCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<ReportOptions>();
  CLI::App* command = addReport(app, *options, "status",
                                terminal::say("Muestra estado, contadores y reloj de la impresora",
                                              "Show the printer's status, counters and clock"));
  command->callback([options, &status] { status = guarded([&] { return runStatus(*options); }); });
}

}  // namespace zentaro::tools
