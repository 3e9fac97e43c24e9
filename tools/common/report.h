// Commands that ask the printer for records: what "zentaro status" and "zentaro cierre" share.
#pragma once

#include <string_view>
#include <vector>

#include "common/connection.h"

namespace zentaro::tools {

struct ReportOptions {
  PortOptions port;
  bool isJson = false;
};

/// A member that hands out a record, and its arguments.
struct RecordRequest {
  std::string_view member;
  std::vector<Variant> arguments;
};

/// Adds a subcommand with the options of a report; `options` must live until the command line is parsed.
CLI::App* addReport(CLI::App& app, ReportOptions& options, const char* name, const char* help);

/// Asks for the records in turn and shows each as a table or, all together, as JSON. Stops at the first that
/// cannot be had. Gives the exit status.
int showRecords(const ReportOptions& options, const std::vector<RecordRequest>& requests);

}  // namespace zentaro::tools
