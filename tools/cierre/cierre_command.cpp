// Prints a closing and shows the record of its figures.
#include "cierre/cierre_command.h"

#include <memory>

#include "common/guarded.h"
#include "common/report.h"

namespace zentaro::tools {

namespace {

struct Options {
  ReportOptions report;
  std::string closing;
};

}  // namespace

void addCierreCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<Options>();
  CLI::App* command =
      addReport(app, options->report, "cierre", "Print the X or Z closing and show its figures");
  command->add_option("CLOSING", options->closing, "x reads the day's figures, z ends the day")
      ->required()
      ->transform(CLI::IsMember({"x", "z"}, CLI::ignore_case));
  command->callback([options, &status] {
    const int closing = options->closing == "x" ? CIERRE_X : CIERRE_Z;
    status = guarded([&] { return showRecords(options->report, {{"PerformReturnCierre", {closing}}}); });
  });
}

}  // namespace zentaro::tools
