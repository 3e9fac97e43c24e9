// Settings, ports and printers, with what to do about each finding.
#include "tools/doctor/doctor_command.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <utility>

#include "automation/automation_error.h"
#include "base/files/json.h"
#include "base/files/paths.h"
#include "base/files/read_input.h"
#include "base/files/temporary_folder.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "platform/system_paths.h"
#include "serial/modCOMM.h"
#include "till/books/books.h"
#include "tools/connection/connection.h"
#include "tools/connection/known_settings.h"
#include "tools/doctor/books_facts.h"
#include "tools/doctor/port_facts.h"
#include "tools/doctor/printer_facts.h"
#include "tools/doctor/report_file.h"
#include "tools/doctor/service_facts.h"
#include "tools/doctor/settings_facts.h"
#include "tools/show/guarded.h"
#include "tools/trace/trace_text.h"

namespace zentaro::tools {

using terminal::say;

namespace {

constexpr int shortTimeout = 2, shortPatience = 10;  // seconds; a printer that is there answers at once

struct DoctorOptions {
  PortOptions port;
  bool isJson = false;
  std::string reportFile;
};

struct Chapter {
  std::string code, title;
  Findings findings = {};
};

// Only a port that somebody named is written to: on any other one there may be anything.
void askPrinter(const PortFacts& facts, const std::string& subject, PortOptions options, Findings& findings) {
  options.timeout = options.timeout.value_or(shortTimeout);
  options.giveUp = options.giveUp.value_or(shortPatience);
  try {
    Connection connection(options);
    judgePrinter(examinePrinter(connection), subject, connection.portWords(), findings);
  } catch (const AutomationError& error) {
    std::u16string record;
    findings.add(subject, judgeOpening(modCOMM::CommErrorText(record), error.what(), facts));
  }
}

void examine(const std::string& name, const std::string& path, bool isConfigured, const PortOptions& options,
             Findings& findings) {
  const PortFacts facts = examinePort(name, path, isConfigured);
  const Finding finding = judgePort(facts);
  const std::string subject = name + " " + facts.device;
  findings.add(subject, finding);
  if (isConfigured && !finding.isProblem) askPrinter(facts, subject, options, findings);
}

Chapter examineSettings() {
  Chapter chapter{"settings", say("Configuración", "Settings")};
  std::string separator = say(", de ", ", from ");
  for (const std::string& path : settingsPaths()) {
    const SettingsFile file(path);
    chapter.title += std::exchange(separator, ", ") + path;
    if (!file.exists()) chapter.title += say(" (no existe)", " (not there)");
    judgeSettings(file.settings(), chapter.findings);
  }
  return chapter;
}

Chapter examinePorts(const PortOptions& asked) {
  Chapter chapter{"ports", say("Puertos", "Ports")};
  if (asked.isVirtual) {
    askPrinter({}, "--virtual", asked, chapter.findings);
    return chapter;
  }
  if (!asked.device.empty()) {
    examine("--device", asked.device, true, asked, chapter.findings);
    return chapter;
  }
  bool isAnyConfigured = false;
  for (int port = 1; port <= portCount; ++port) {
    const std::string name = portKey(port);
    const bool isConfigured = asked.port == port || settingInForce(portSection, name).has_value();
    if (asked.port && asked.port != port) continue;
    PortOptions options = asked;
    options.port = port;
    examine(name, devicePath(name), isConfigured, options, chapter.findings);
    isAnyConfigured = isAnyConfigured || isConfigured;
  }
  if (!isAnyConfigured)
    chapter.findings.add(
        say("COM1 a COM8", "COM1 to COM8"),
        {"no-port-configured", true,
         say("ningún puerto tiene dispositivo; no se preguntó a ninguna impresora (tampoco en {}, que sería COM1)",
             "no port has been given a device, so no printer was asked (nor at {}, which would be COM1)",
             {devicePath(portKey(1))}),
         say("{}\no, una sola vez: {}", "{}\nor, once: {}",
             {terminal::whole("zentaro settings set COM1 " + std::string(deviceExample)),
              terminal::whole(say("zentaro doctor --device RUTA", "zentaro doctor --device PATH"))})});
  return chapter;
}

// Which command would use the device: the port that leads to it, or its path.
std::string commandFor(const SerialDevice& device) {
  for (int port = 1; port <= portCount; ++port) {
    const std::string path = devicePath(portKey(port));
    if (examinePort("", path, false).device == device.path) return "--port " + std::to_string(port);
  }
  return "--device " + (device.byId.empty() ? device.path : device.byId);
}

std::string stateOf(const PortFacts& facts) {
  if (!facts.canReadAndWrite) return say("este usuario no lo puede usar", "this user may not use it");
  return facts.holder.empty() ? say("libre", "free") : facts.holder;
}

Chapter listDevices() {
  Chapter chapter{"devices", say("Dispositivos seriales de esta máquina", "Serial devices of this machine")};
  for (const SerialDevice& device : serialDevices()) {
    const PortFacts facts = examinePort("", device.path, false);
    std::string text = device.driver.empty() ? "" : device.driver + ", ";
    if (!facts.group.empty()) text += say("grupo {}, ", "group {}, ", {facts.group});
    text += stateOf(facts);
    text += say("; se usa con {}", "; used by {}", {commandFor(device)});
    chapter.findings.add(device.path, {"device", false, text});
  }
  return chapter;
}

// No port was asked: there is no trace.
std::string readIfThere(const std::string& path) {
  return std::filesystem::exists(files::pathOf(path)) ? base::readInput(path) : "";
}

int runDoctor(const DoctorOptions& options) {
  PortOptions port = options.port;
  base::TemporaryFolder folder;
  const std::string trace = files::textOf(folder.path() / "trace");
  if (!options.reportFile.empty() && port.traceFile.empty()) port.traceFile = trace;

  Chapter settings = examineSettings();
  judgeRegistration(settings.findings);
  Chapter books{"books", say("Libros de las ventas", "Books of the sales")};
  judgeBooks(till::booksPath(), books.findings);
  Chapter service{"service", say("Servicio", "Service")};
  judgeService(till::booksPath(), service.findings);
  const std::vector<Chapter> chapters{settings, examinePorts(port), listDevices(), books, service};

  int problems = 0;
  std::string page;
  Json json;
  for (const Chapter& chapter : chapters) {
    problems += chapter.findings.problems();
    page += chapter.title + "\n" + chapter.findings.text() + "\n";
    json[chapter.code] = chapter.findings.json();
  }
  page += problems == 0 ? say("Nada anda mal.", "Nothing is wrong.")
                        : say("Hallazgos por ver, con \"!\": {}",
                              "Findings to look at, marked with \"!\": {}", {std::to_string(problems)});
  page += "\n";
  std::cout << (options.isJson ? terminal::whole(jsonPage(json)) : page);
  if (!options.reportFile.empty())
    writeReport(options.reportFile, page,
                traceText(parseTrace(readIfThere(port.traceFile)), FieldTexts::LeftOut));
  return problems == 0 ? exitDone : exitRefused;
}

}  // namespace

void addDoctorCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<DoctorOptions>();
  CLI::App* command =
      app.add_subcommand("doctor", say("Revisa configuración, puertos e impresoras, y dice qué hacer",
                                       "Check settings, ports and printers, and say what to do"));
  addPortOptions(*command, options->port);
  command->add_flag("--json", options->isJson, say("Los hallazgos como JSON", "The findings as JSON"));
  command
      ->add_option("--report", options->reportFile,
                   say("Escribe un texto para quien ayuda", "Write a text for whoever helps"))
      ->type_name(say("ARCHIVO", "FILE"));
  command->footer(
      say("A una impresora se le pide su estado, que no imprime nada, en los puertos que nombra la "
          "configuración, o en el que se dé. Estado de salida: 0 nada anda mal, 1 hay hallazgos (un bit "
          "que no sabe leer lo es, también si la impresora está sana), 2 no se pudo mirar.",
          "A printer is asked for its status, which prints nothing, on the ports that the settings name, "
          "or on the one that is given. Exit status: 0 nothing is wrong, 1 with findings (a bit that "
          "it cannot read is one, on a sound printer too), 2 it could not look."));
  command->callback([options, &status] { status = guarded([&] { return runDoctor(*options); }); });
}

}  // namespace zentaro::tools
