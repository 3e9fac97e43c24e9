// Asks for records and shows each as a table or as JSON.
#include "common/report.h"

#include <iostream>

#include "automation/conversions.h"
#include "automation/description.h"
#include "common/guarded.h"
#include "common/show.h"

namespace zentaro::tools {

namespace {

// A second Z would close an empty day, and cannot be taken back.
void warnOfLostClosing(const RecordRequest& request, const CZentaro& printer) {
  const bool isLost = printer.nEnvironmentError >= ENVERR_COMM && printer.nEnvironmentError <= ENVERR_BADSEQ;
  if (!isLost || request.arguments.empty() || toInt32(request.arguments[0]) != CIERRE_Z) return;
  std::cerr
      << "The answer was lost: the day may be closed already. Look at the paper, and at UltimoCierreZ of\n"
         "\"zentaro status\", before you close again.\n";
}

// The record that a member hands out; nothing when its outcome was not 0.
Object ask(Connection& connection, RecordRequest request) {
  CZentaro& printer = connection.printer();
  printer.verifyCheckSum = true;
  const Variant result = connection.object().call(request.member, request.arguments);
  if (!result.object().isNothing()) return result.object();
  std::cerr << "zentaro: " << request.member << ": " << outcomeLine(printer.nEnvironmentError) << '\n'
            << answerText(printer);
  warnOfLostClosing(request, printer);
  return {};
}

}  // namespace

int showRecords(const ReportOptions& options, const std::vector<RecordRequest>& requests) {
  Connection connection(options.port);
  Json page;
  for (const RecordRequest& request : requests) {
    const Object record = ask(connection, request);
    if (record.isNothing()) return exitRefused;
    const std::string name(record.description().name);
    if (options.isJson) {
      page[name] = valueJson(record);
    } else {
      std::cout << name << '\n' << recordTable(record, "  ");
    }
  }
  if (options.isJson) std::cout << jsonPage(page);
  return exitDone;
}

CLI::App* addReport(CLI::App& app, ReportOptions& options, const char* name, const char* help) {
  CLI::App* command = app.add_subcommand(name, help);
  addPortOptions(*command, options.port);
  command->add_flag("--json", options.isJson, "Show the records as JSON");
  return command;
}

}  // namespace zentaro::tools
