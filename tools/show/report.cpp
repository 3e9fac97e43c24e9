// Asks for records and shows each as a table or as JSON.
#include "tools/show/report.h"

#include <CLI/CLI.hpp>
#include <iostream>

#include "automation/description.h"
#include "base/files/json.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "till/line/line_words.h"
#include "till/words/verdict_words.h"
#include "tools/show/guarded.h"
#include "tools/show/record_words.h"
#include "tools/show/show.h"

namespace zentaro::tools {

using terminal::say;

Object askStatusRecord(Connection& connection, std::string_view member) {
  CZentaro& printer = connection.printer();
  Object record;
  const auto request = [&] { record = connection.object().call(member, {}).object(); };
  const till::Heard heard = connection.line().askStatus(request);
  if (heard == till::Heard::InStep && !record.isNothing()) return record;
  if (heard == till::Heard::InStep)
    sayWhy(member, printer);
  else
    std::cerr << "zentaro: " << member << ": " << till::trouble(heard) << " ("
              << outcomeLine(printer.nEnvironmentError) << ")\n";
  return {};
}

void sayWhy(std::string_view member, const CZentaro& printer) {
  std::cerr << "zentaro: " << member << ": " << outcomeLine(printer.nEnvironmentError) << '\n'
            << answerText(printer);
}

void showRecords(const std::vector<Object>& records, const ReportOptions& options, Connection& connection) {
  const bool isVirtual = connection.virtualPrinter() != nullptr;
  Json page;
  for (const Object& record : records) {
    const std::string name(record.description().name);
    if (options.isJson)
      page[name] = valueJson(record);
    else
      std::cout << name << '\n' << recordTable(recordRows(record));
  }
  page["virtual"] = isVirtual;
  if (options.isJson)
    std::cout << terminal::whole(jsonPage(page));
  else if (isVirtual)
    std::cout << till::virtualNotice() << '\n';
}

CLI::App* addReport(CLI::App& app, ReportOptions& options, const char* name, const std::string& help) {
  CLI::App* command = app.add_subcommand(name, help);
  addPortOptions(*command, options.port);
  command->add_flag("--json", options.isJson,
                    say("Muestra los registros como JSON", "Show the records as JSON"));
  return command;
}

}  // namespace zentaro::tools
