// Settings, ports and printers, with what to do about each finding.
#include "doctor/doctor_command.h"

#include <algorithm>
#include <iostream>
#include <memory>

#include "automation/automation_error.h"
#include "common/connection.h"
#include "common/guarded.h"
#include "common/known_settings.h"
#include "common/show.h"
#include "doctor/port_facts.h"
#include "platform/system_paths.h"
#include "settings/settings_file.h"
#include "text/ascii.h"

namespace zentaro::tools {

namespace {

constexpr int shortTimeout = 2;  // seconds; a printer that is there answers a status request at once

// Writes findings, and counts the problems among them.
class Report {
 public:
  void line(const std::string& subject, const Finding& finding) {
    std::cout << (finding.isProblem ? "  ! " : "    ") << subject << ": " << finding.text << '\n';
    std::string_view rest = finding.advice;
    while (!rest.empty()) {
      const std::size_t end = std::min(rest.find('\n'), rest.size());
      std::cout << "      -> " << rest.substr(0, end) << '\n';
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    problems_ += finding.isProblem ? 1 : 0;
  }
  int problems() const { return problems_; }

 private:
  int problems_ = 0;
};

bool isKnown(const SettingsText::Entry& entry) {
  return std::ranges::any_of(knownSettings(), [&](const KnownSetting& setting) {
    return equalIgnoringCase(setting.section, entry.section) && equalIgnoringCase(setting.key, entry.key);
  });
}

void examineSettings(const SettingsFile& file, Report& report) {
  std::cout << "Settings, from " << file.path()
            << (file.exists() ? "\n" : " (not there: all have their defaults)\n");
  for (const SettingsText::Entry& entry : file.settings().entries()) {
    const std::string subject = "[" + entry.section + "] " + entry.key;
    const Finding unknown{true, "no setting has this name, so nobody reads it",
                          "\"zentaro settings list\" shows all names"};
    report.line(subject, isKnown(entry) ? Finding{false, entry.value, ""} : unknown);
  }
}

Finding silent(ENVERR_CODES outcome) {
  return {true, "no valid answer to a status request: " + outcomeLine(outcome),
          "is the printer on, out of its menu, and the cable plugged in? The line runs at 9600 baud, 8N1"};
}

// Asks the printer for its status, which prints nothing and changes nothing.
Finding askPrinter(const PortOptions& options) {
  try {
    Connection connection(options);
    connection.printer().StatusIF(u"N");
    const ENVERR_CODES outcome = connection.printer().nEnvironmentError;
    const bool hasAnswered = outcome == ENVERR_OK || outcome == ENVERR_STATUS;
    if (!hasAnswered) return silent(outcome);
    if (outcome == ENVERR_OK) return {false, "a printer answers: " + outcomeLine(outcome), ""};
    return {true, "a printer answers that something is wrong: " + utf8(connection.printer().sLastError),
            "\"zentaro call StatusIF N\" with the same port shows its status words"};
  } catch (const AutomationError& error) {
    return {true, "the port cannot be opened: " + std::string(error.what()),
            "if another program has it, \"sudo zentaro doctor\" may show which one; else it may be no serial "
            "line"};
  }
}

// Only a port that somebody named is written to: on any other one there may be anything.
void examine(const std::string& name, const std::string& path, bool isConfigured, PortOptions options,
             Report& report) {
  const PortFacts facts = examinePort(name, path, isConfigured);
  const Finding finding = judgePort(facts);
  const std::string subject = name + " " + facts.device;
  report.line(subject, finding);
  if (!isConfigured || finding.isProblem) return;
  options.timeout = options.timeout.value_or(shortTimeout);
  report.line(subject, askPrinter(options));
}

void examinePorts(const SettingsFile& file, const PortOptions& asked, Report& report) {
  bool isAnyConfigured = false;
  for (int port = 1; port <= portCount; ++port) {
    const std::string name = portKey(port);
    const bool isConfigured = asked.port == port || file.settings().value(portSection, name).has_value();
    if (asked.port && asked.port != port) continue;
    PortOptions options = asked;
    options.port = port;
    examine(name, devicePath(name), isConfigured, options, report);
    isAnyConfigured = isAnyConfigured || isConfigured;
  }
  if (isAnyConfigured) return;
  report.line("COM1 to COM8",
              {true, "no port has been given a device, so no printer was asked",
               "\"zentaro settings set COM1 /dev/ttyUSB0\", or \"zentaro doctor --device PATH\""});
}

int run(const PortOptions& asked) {
  Report report;
  const SettingsFile file(settingsPath());
  examineSettings(file, report);
  std::cout << "\nPorts\n";
  if (asked.device.empty()) {
    examinePorts(file, asked, report);
  } else {
    examine("--device", asked.device, true, asked, report);
  }
  std::cout << '\n'
            << (report.problems() == 0 ? "Nothing is wrong." : "Findings to look at, marked with \"!\": ")
            << (report.problems() == 0 ? "" : std::to_string(report.problems())) << '\n';
  return report.problems() == 0 ? exitDone : exitRefused;
}

}  // namespace

void addDoctorCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<PortOptions>();
  CLI::App* command = app.add_subcommand("doctor", "Check settings, ports and printers, and say what to do");
  addPortOptions(*command, *options);
  command->footer(
      "A printer is asked for its status, which prints nothing, on the ports that the settings name, or on "
      "the one\n"
      "that is given. Exit status: 0 when nothing is wrong, 1 with findings, 2 when it could not look.");
  command->callback([options, &status] { status = guarded([&] { return run(*options); }); });
}

}  // namespace zentaro::tools
