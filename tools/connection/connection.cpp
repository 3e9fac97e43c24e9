// Opening the port that the options name.
#include "tools/connection/connection.h"

#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <thread>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "base/files/paths.h"
#include "base/system/error_text.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "interface/library.h"
#include "platform/system_paths.h"
#include "serial/modCOMM.h"
#include "till/books/books.h"
#include "till/line/line_words.h"
#include "till/line/machine.h"
#include "till/words/verdict_words.h"
#include "tools/connection/holders.h"
#include "tools/connection/known_settings.h"
#include "tools/connection/opening_trouble.h"
#include "tools/connection/service_here.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

constexpr int ownPort = 1;  // the number under which a device that was named by its path is opened

// Where a shop has its printer, nobody should sell on another one by mistake.
void demandChoice(Unasked unasked) {
  for (int port = 1; port <= portCount; ++port) {
    const std::string device =
        utf8(services().settings->read(settingsApplication, portSection, portKey(port), u""));
    if (device.empty()) continue;
    throw std::runtime_error(say(
        "hay una impresora configurada ({} = {}): diga --port {} o --device RUTA para usarla, o --virtual "
        "para la virtual",
        "a printer is configured ({} = {}): say --port {} or --device PATH to use it, or --virtual for the "
        "virtual one",
        {portKey(port), harmless(device), std::to_string(port)}));
  }
  if (unasked == Unasked::Virtual) return;
  throw std::runtime_error(say(
      "no se dijo qué impresora, y la configuración de esta cuenta no tiene ninguna: diga --port N o --device "
      "RUTA, póngala con \"zentaro settings set COM1 RUTA\" (--system para todas las cuentas), o diga --virtual "
      "para la virtual",
      "no printer was named, and this account's settings have none: say --port N or --device PATH, set it by "
      "\"zentaro settings set COM1 PATH\" (--system for all accounts), or say --virtual for the virtual one",
      {}));
}

std::unique_ptr<VirtualPrinter> printerFor(const PortOptions& options, Unasked unasked,
                                           const std::vector<std::string>& words) {
  demandReadableSettings();
  if (options.port || !options.device.empty()) return nullptr;
  if (!options.isVirtual && words.empty()) demandChoice(unasked);
  auto printer = std::make_unique<VirtualPrinter>(words);
  std::cerr << "zentaro: " << till::virtualNotice() << "\n         " << printer->device() << "\n";
  return printer;
}

Services withSettings(SettingsStore& settings) {
  Services changed = services();
  changed.settings = &settings;
  return changed;
}

std::string quoted(const std::string& word) {
  const bool isPlain = word.find_first_not_of(
                           "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"
                           "/._-:+@=,") == std::string::npos;
  if (isPlain) return word;
  std::string text = "'";
  for (const char character : word) text += character == '\'' ? "'\\''" : std::string(1, character);
  return text + "'";
}

// Of the opening that failed last.
bool failedInUse() {
  std::u16string text;
  return troubleOf(modCOMM::CommErrorText(text)) == OpeningTrouble::InUse;
}

std::string inUseText(const std::string& device) {
  const std::string holder = holderOf(device);
  const std::optional<ServiceHere> service = serviceHere(till::booksPath());
  const std::string served = service ? nameOn(*service, device) : std::string();
  if (!served.empty())
    return say("el puerto {} lo tiene el servicio; {}", "the port {} is in use by the service; {}",
               {harmless(device), sendToService(*service, served)});
  return say(
      "el puerto {} está en uso: {}", "the port {} is in use: {}",
      {harmless(device),
       holder.empty() ? say("un programa de otra cuenta", "a program of another user") : harmless(holder)});
}

}  // namespace

void demandReadableSettings() {
  const auto unreadable = unreadableSettings();
  if (!unreadable) return;
  throw std::runtime_error(say(
      "la configuración {} no se puede leer ({}): déle permiso de lectura a esta cuenta, o diga otra en "
      "ZENTARO_SETTINGS",
      "the settings {} cannot be read ({}): let this account read them, or name others in ZENTARO_SETTINGS",
      {harmless(unreadable->path), system::errorText(unreadable->reason.value())}));
}

std::string portWordsOf(const PortOptions& options) {
  if (options.port) return "--port " + std::to_string(*options.port);
  return options.device.empty() ? "--virtual" : "--device " + quoted(options.device);
}

std::string deviceNamedBy(const PortOptions& options) {
  if (options.port) return till::resolvedDevice(portKey(*options.port));
  return options.device.empty() ? std::string() : till::resolvedDevice(options.device);
}

Connection::Connection(const PortOptions& options, const std::vector<std::string>& virtualPrinterOptions,
                       Unasked unasked, till::LineObserver* observer)
    : virtualPrinter_(printerFor(options, unasked, virtualPrinterOptions)),
      settings_(*services().settings),
      scope_(withSettings(settings_)),
      portWords_(portWordsOf(options)) {
  base::Interruption::setLastWords(
      say("\nzentaro: interrumpido; si la orden imprime, puede estar impreso: mire el papel\n",
          "\nzentaro: ended; if the command prints, it may be printed: look at the paper\n"));
  device_ = virtualPrinter_ ? virtualPrinter_->device() : options.device;
  if (!device_.empty()) settings_.replace(portSection, portKey(ownPort), utf16(device_));
  if (options.port) device_ = devicePath(portKey(*options.port));
  if (options.timeout) {
    settings_.replace(settingTimeOut.section, settingTimeOut.key, utf16(std::to_string(*options.timeout)));
  }
  if (!options.traceFile.empty()) traceTo(options.traceFile);
  // Switched on by the setting itself, the trace could not be switched off where it cannot be written.
  const bool isTraced = readSetting(settingObjectTrace) != u"0";
  settings_.replace(settingObjectTrace.section, settingObjectTrace.key, u"0");
  object_ = createObject("CZentaro");
  if (isTraced) traceObject(options.traceFile.empty());
  printer().CommPort = options.port.value_or(ownPort);
  openPort(std::chrono::seconds(options.wait.value_or(0)));
  line_.emplace(printer(), till::patienceOf(options.giveUp), observer == nullptr ? &teller_ : observer,
                base::Interruption::isRequested);
  if (!options.traceFile.empty()) line_->traceDriver();
}

// Whoever waits holds nothing: a failed opening is closed before the next.
void Connection::openPort(std::chrono::seconds wait) {
  constexpr std::chrono::milliseconds pause{100};
  // NOLINTNEXTLINE(clang-analyzer-deadcode.DeadStores): read behind an opening that failed
  const auto end = std::chrono::steady_clock::now() + wait;
  for (bool isTold = false;; std::this_thread::sleep_for(pause)) {
    try {
      return printer().PortOpen(true);
    } catch (const AutomationError&) {
      if (!failedInUse()) throw;
    }
    printer().PortOpen(false);
    const std::string text = inUseText(device_);
    if (std::chrono::steady_clock::now() >= end || base::Interruption::isRequested())
      throw std::runtime_error(text +
                               say("; con --wait SEGUNDOS se espera", "; --wait SECONDS waits for it"));
    if (!std::exchange(isTold, true)) std::cerr << "zentaro: " << text << say("; se espera\n", "; waiting\n");
  }
}

// A trace that this run was asked for is needed; one that the settings want on for good stops no sale.
void Connection::traceObject(bool goesOnWithout) {
  try {
    printer().DebugMode(true);
  } catch (const AutomationError& error) {
    const std::string path = harmless(utf8(readSetting(settingObjectTraceFile)));
    if (!goesOnWithout)
      throw std::runtime_error(say("la traza {} no se puede abrir ({}); ¿está la carpeta, y deja escribir?",
                                   "the trace {} cannot be opened ({}); is its folder there, and writable?",
                                   {path, error.what()}));
    std::cerr << say("zentaro: aviso: la traza {} (DumpZT) no se puede abrir ({}); se sigue sin ella\n",
                     "zentaro: warning: the trace {} (DumpZT) cannot be opened ({}); going on without it\n",
                     {path, error.what()});
  }
}

// Both traces go into one file: each line is one write to its end.
void Connection::traceTo(const std::string& path) {
  const std::u16string file = utf16(files::textOf(std::filesystem::absolute(files::pathOf(path))));
  for (const SettingKey& onOff : {settingObjectTrace, settingDriverTrace})
    settings_.replace(onOff.section, onOff.key, u"1");
  for (const SettingKey& name : {settingObjectTraceFile, settingDriverTraceFile})
    settings_.replace(name.section, name.key, file);
}

void Connection::getInStep() {
  if (const till::Heard heard = line_->getInStep(); heard != till::Heard::InStep)
    throw std::runtime_error(till::trouble(heard));
}

}  // namespace zentaro::tools
