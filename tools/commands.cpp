// The list of subcommands.
#include "commands.h"

#include <array>

#include "call/call_command.h"
#include "cierre/cierre_command.h"
#include "demo/demo_command.h"
#include "doctor/doctor_command.h"
#include "host/host_command.h"
#include "members/members_command.h"
#include "printer/printer_command.h"
#include "sale/sale_command.h"
#include "settings/settings_command.h"
#include "status/status_command.h"
#include "trace/trace_command.h"

namespace zentaro::tools {

namespace {

constexpr std::array commands{
    addDemoCommand,      //
    addPrinterCommand,   //
    addCallCommand,      //
    addStatusCommand,    //
    addCierreCommand,    //
    addSaleCommand,      //
    addTraceCommand,     //
    addMembersCommand,   //
    addSettingsCommand,  //
    addDoctorCommand,    //
    addHostCommand,      //
};

// An unknown subcommand would only be reported as a missing one.
std::string explain(const CLI::App* app, const CLI::Error& error) {
  const std::vector<std::string> rest = app->remaining();
  if (!app->get_subcommands().empty() || rest.empty()) return CLI::FailureMessage::simple(app, error);
  return "unknown subcommand \"" + rest.front() + "\": \"zentaro --help\" lists all\n";
}

}  // namespace

void addCommands(CLI::App& app, int& status) {
  app.failure_message(explain);
  for (const AddCommand add : commands) add(app, status);
}

}  // namespace zentaro::tools
