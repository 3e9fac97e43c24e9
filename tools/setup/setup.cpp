// The run, step by step.
#include "tools/setup/setup.h"

#include <iostream>

#include "base/system/child_process.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "platform/system_paths.h"
#include "tools/connection/connection.h"
#include "tools/connection/known_settings.h"
#include "tools/doctor/report_file.h"
#include "tools/settings/settings_file.h"
#include "tools/setup/changes.h"
#include "tools/show/guarded.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

void Setup::tell(const std::string& text) {
  page_ += text;
  if (!options_.isJson) std::cout << text << std::flush;
}

// Named ones, or all that the machine has.
std::vector<SerialDevice> Setup::devices() const {
  std::vector<SerialDevice> all = serialDevices();
  if (options_.devices.empty()) return all;
  std::vector<SerialDevice> named;
  for (const std::string& path : options_.devices) named.push_back({path, {}, {}});
  return named;
}

// A modem or a scale is nobody's to write to, unless somebody named it.
Questions Setup::questions() const {
  const bool isNamed = !options_.devices.empty();
  if (options_.isYes && isNamed) return Questions(Questions::Mode::Yes);
  return Questions(options_.isJson || options_.isYes ? Questions::Mode::No : Questions::Mode::Ask);
}

void Setup::examine(const SerialDevice& device) {
  Discovery found = lookAt(device);
  tell("\n" + harmless(device.path) + (device.driver.empty() ? "" : " (" + device.driver + ")") +
       (found.port.group.empty() ? "" : say(", grupo {}", ", group {}", {found.port.group})) + "\n");
  const bool canBeAsked = found.findings.problems() == 0;
  if (canBeAsked &&
      questions().confirm(
          say("¿Preguntarle su estado a {}? No imprime nada, pero si es un módem o una balanza, mejor no",
              "Ask {} for its status? It prints nothing; but if it is a modem or a scale, better not",
              {harmless(device.path)})))
    ask(found, {});
  if (canBeAsked && !found.wasAsked && found.findings.problems() == 0)
    found.findings.add(device.path, {"not-asked", false, say("no se le preguntó", "it was not asked")});
  if (found.isPrinter()) {
    ++printers_;
    tell(say("  encontrada {} en {}\n", "  found {} at {}\n",
             {found.printer.serialNumber.empty() ? say("una impresora", "a printer")
                                                 : harmless(found.printer.serialNumber),
              harmless(lastingName(device.path))}));
  }
  tell(found.findings.text());
  Json row{{"device", device.path},
           {"driver", device.driver},
           {"group", found.port.group},
           {"printer", found.isPrinter()},
           {"serialNumber", found.printer.serialNumber},
           {"findings", found.findings.json()}};
  json_.push_back(std::move(row));
  if (found.isPrinter() || !found.port.canReadAndWrite) give(found);
}

void Setup::give(const Discovery& found) {
  const std::string name = lastingName(found.device.path);
  if (found.port.exists && !found.port.canReadAndWrite) return;  // the finding says how
  giveName(found, name);
  givePort(found, name);
  giveGroup(found);
  printSheet(found);
}

void Setup::givePort(const Discovery& found, const std::string& name) {
  // Root sets it up for whoever stands at the counter.
  SettingsFile file(isRoot() ? settingsPaths().back() : settingsPath());
  const auto port = portFor(found.device.path, file.settings());
  if (!port)
    return tell(say("  COM1 a COM8 ya tienen otros dispositivos\n", "  COM1 to COM8 have other devices\n"));
  if (port->isSet) {
    tell(say("  ya es {} en {}\n", "  it is {} already in {}\n", {port->name, harmless(file.path())}));
  } else {
    if (!questions().confirm(say("¿Escribir {} = {} en {}?", "Write {} = {} into {}?",
                                 {port->name, harmless(name), harmless(file.path())})))
      return tell("      -> " + terminal::whole("zentaro settings set " + port->name + " " + harmless(name)) +
                  "\n");
    file.set(portSection, port->name, name);
    tell(say("  {} es ahora {}\n", "  {} is now {}\n", {port->name, harmless(name)}));
  }
  json_.back()["port"] = port->name;
}

// A command for root: run when we are, told when not.
void Setup::execute(const std::vector<std::string>& words, const std::string& question) {
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : " ") + word;
  if (!isRoot() || !questions().confirm(question))
    return tell("      -> " + terminal::whole("sudo " + line) + "\n");
  const int status = base::runProgram(words);
  tell(status == 0 ? say("  hecho: {}\n", "  done: {}\n", {line})
                   : say("  falló ({}): {}\n", "  failed ({}): {}\n", {std::to_string(status), line}));
}

// Root may use the device; who called sudo may not.
void Setup::giveGroup(const Discovery& found) {
  const std::string account = accountName();
  if (!isRoot() || found.port.group.empty() || found.port.group == "root" ||
      isMember(account, found.port.group))
    return;
  execute({"usermod", "-aG", found.port.group, account},
          say("¿Poner a {} en el grupo {}, para que pueda usarlo?",
              "Put {} into the group {}, so that it may use it?", {account, found.port.group}));
}

// ttyUSB0 may be another adapter tomorrow.
void Setup::giveName(const Discovery& found, const std::string& name) {
  const bool isUsb = name.starts_with("/dev/serial/by-id");
  const std::string rule = ruleOfTheProgram();
  if (!isUsb || rule.empty()) return;
  execute({"cp", rule, "/etc/udev/rules.d/"},
          say("¿Instalar la regla de udev, que le da a {} un nombre en /dev/fiscal y el grupo dialout?",
              "Install the udev rule, which gives {} a name below /dev/fiscal and the group dialout?",
              {harmless(found.device.path)}));
  tell(say("      después desconecte el adaptador y conéctelo otra vez: así la regla le da el nombre\n",
           "      then unplug the adapter and plug it in again: so the rule gives it the name\n"));
}

void Setup::printSheet(const Discovery& found) {
  const bool isWanted =
      options_.wantsTestSheet ||
      (!options_.isYes && questions().confirm(say("¿Imprimir una hoja de prueba, que no es fiscal?",
                                                  "Print a test sheet, which is not fiscal?")));
  if (!isWanted || !found.isPrinter()) return;
  PortOptions port;
  port.device = found.device.path;
  Connection connection(port);
  CZentaro& printer = connection.printer();
  connection.line().startAnywhere();
  connection.line().getInStep();
  std::int16_t outcome = printer.AbrirDNF();
  for (const char16_t* line :
       {u"Zentaro", u"Hoja de prueba / test sheet", u"0123456789012345678901234567890123456789"})
    if (outcome == ENVERR_OK) outcome = printer.PasarLineaDNF(line);
  const std::int16_t closed = printer.CerrarDNF();
  if (outcome == ENVERR_OK) outcome = closed;
  tell(outcome == ENVERR_OK
           ? say("  hoja de prueba impresa\n", "  test sheet printed\n")
           : say("  la hoja de prueba no salió bien: {}\n", "  the test sheet did not come out well: {}\n",
                 {harmless(utf8(printer.EnvironmentError()))}));
  json_.back()["testSheet"] = outcome == ENVERR_OK;
}

void Setup::report() {
  std::string path = options_.reportFile;
  if (path.empty()) {
    path = say("zentaro-informe.txt", "zentaro-report.txt");
    if (options_.isYes || !questions().confirm(say("¿Guardar esto en {}, para quien ayude?",
                                                   "Keep this in {}, for whoever helps?", {path})))
      return;
  }
  writeReport(path, page_, "");
  tell(say("\nInforme: {}\n", "\nReport: {}\n", {harmless(path)}));
}

int Setup::run() {
  const std::vector<SerialDevice> all = devices();
  tell(say("Dispositivos seriales: {}. No se cambia nada sin un sí.\n",
           "Serial devices: {}. Nothing is changed without a yes.\n", {std::to_string(all.size())}));
  for (const SerialDevice& device : all) examine(device);
  if (printers_ == 0)
    tell(say("\nNo apareció ninguna impresora. ¿Está encendida y con su cable? {} dice más.\n",
             "\nNo printer was found. Is it on, with its cable? {} says more.\n",
             {terminal::quoted("zentaro doctor")}));
  report();
  if (options_.isJson) std::cout << terminal::whole(jsonPage({{"devices", json_}}));
  return printers_ == 0 ? exitRefused : exitDone;
}

}  // namespace zentaro::tools
