// Asks for records and shows each as a table or as JSON.
#include "reports/report_commands.h"

#include <iostream>
#include <memory>

#include "automation/conversions.h"
#include "automation/description.h"
#include "common/connection.h"
#include "common/guarded.h"
#include "common/show.h"

namespace zentaro::tools {

namespace {

struct Options {
  PortOptions port;
  bool isJson = false;
  std::string closing;
};

struct Request {
  std::string_view member;
  std::vector<Variant> arguments;
};

// A second Z would close an empty day, and cannot be taken back.
void warnOfLostClosing(const Request& request, const CZentaro& printer) {
  const bool isLost = printer.nEnvironmentError >= ENVERR_COMM && printer.nEnvironmentError <= ENVERR_BADSEQ;
  if (!isLost || request.arguments.empty() || toInt32(request.arguments[0]) != CIERRE_Z) return;
  std::cerr
      << "The answer was lost: the day may be closed already. Look at the paper, and at UltimoCierreZ of\n"
         "\"zentaro status\", before you close again.\n";
}

// The record that a member hands out; nothing when its outcome was not 0.
Object ask(Connection& connection, Request request) {
  CZentaro& printer = connection.printer();
  printer.verifyCheckSum = true;
  const Variant result = connection.object().call(request.member, request.arguments);
  if (!result.object().isNothing()) return result.object();
  std::cerr << "zentaro: " << request.member << ": " << outcomeLine(printer.nEnvironmentError) << '\n'
            << answerText(printer);
  warnOfLostClosing(request, printer);
  return {};
}

int show(const Options& options, const std::vector<Request>& requests) {
  Connection connection(options.port);
  Json page;
  for (const Request& request : requests) {
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

int showClosing(const Options& options) {
  return show(options,
              {{"PerformReturnCierre", {static_cast<int>(options.closing == "x" ? CIERRE_X : CIERRE_Z)}}});
}

CLI::App* addReport(CLI::App& app, Options& options, const char* name, const char* help) {
  CLI::App* command = app.add_subcommand(name, help);
  addPortOptions(*command, options.port);
  command->add_flag("--json", options.isJson, "Show the records as JSON");
  return command;
}

}  // namespace

void addStatusCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addReport(app, *options, "status", "Show the printer's status, counters and clock");
  command->callback([options, &status] {
    status = guarded([&] { return show(*options, {{"GetStatusN", {}}, {"GetStatusHASAR", {}}}); });
  });
}

void addCierreCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addReport(app, *options, "cierre", "Print the X or Z closing and show its figures");
  command->add_option("CLOSING", options->closing, "x reads the day's figures, z ends the day")
      ->required()
      ->transform(CLI::IsMember({"x", "z"}, CLI::ignore_case));
  command->callback([options, &status] { status = guarded([&] { return showClosing(*options); }); });
}

}  // namespace zentaro::tools
