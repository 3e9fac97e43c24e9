// Commands that ask the printer for records: what "zentaro status" and "zentaro cierre" share.
#pragma once

#include <string_view>
#include <vector>

#include "tools/connection/connection.h"

namespace zentaro::tools {

struct ReportOptions {
  PortOptions port;
  bool isJson = false;
};

/// Adds a subcommand with the options of a report; `options` must live until the command line is parsed.
CLI::App* addReport(CLI::App& app, ReportOptions& options, const char* name, const std::string& help);

/// The record of a member that asks for a status, once line and printer are in step; nothing when they do not
/// get there, or the printer refuses. Says why on standard error.
Object askStatusRecord(Connection& connection, std::string_view member);

/// Shows each record as a table or, all together, as JSON with the member "virtual".
void showRecords(const std::vector<Object>& records, const ReportOptions& options, Connection& connection);

/// Says on standard error what came of a member that gave no record.
void sayWhy(std::string_view member, const CZentaro& printer);

}  // namespace zentaro::tools
