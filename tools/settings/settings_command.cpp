// The user's settings on the command line.
#include "tools/settings/settings_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "base/files/json.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "base/terminal/nearest.h"
#include "platform/setting_keys.h"
#include "platform/system_paths.h"
#include "text/ascii.h"
#include "tools/connection/known_settings.h"
#include "tools/settings/settings_file.h"
#include "tools/show/guarded.h"
#include "tools/show/wording.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

struct SettingsOptions {
  bool isJson = false, isForMachine = false;
  std::string key, value;
};

KnownSetting settingNamed(const std::string& key) {
  std::string names;
  std::vector<std::string> all;
  for (const KnownSetting& setting : knownSettings()) {
    if (equalIgnoringCase(setting.key, key)) return setting;
    names += " " + setting.key;
    all.push_back(setting.key);
  }
  if (const std::string near = terminal::nearest(key, all); !near.empty())
    throw std::runtime_error(say("ninguna clave se llama \"{}\"; ¿quiso decir {}?",
                                 "no setting \"{}\"; did you mean {}?", {key, near}));
  throw std::runtime_error(
      say("ninguna clave se llama \"{}\": hay{}", "no setting \"{}\": there are{}", {key, names}));
}

struct Held {
  std::string value;
  std::string_view source;
};

Held heldBy(const KnownSetting& setting) {
  const auto given = settingInForce(setting.section, setting.key);
  if (!given) return {setting.fallback, "default"};
  return {given->value, given->isOfMachine ? "machine" : "set"};
}

std::string sourceInWords(std::string_view source) {
  return source == "set"       ? say("  puesto", "  set")
         : source == "machine" ? say("  de la máquina", "  machine")
                               : say("  de fábrica", "  default");
}

void checkValue(const KnownSetting& setting, const std::string& value) {
  if (isAcceptable(setting, value)) return;
  throw std::runtime_error(
      say("{} debe ser un número entero de {} a {}, no \"{}\"; nada se cambió",
          "{} must be a whole number from {} to {}, not \"{}\"; nothing was changed",
          {setting.key, std::to_string(setting.lowest), std::to_string(setting.highest), value}));
}

std::string shown(const std::string& value) {
  return value.empty() ? say("(vacío)", "(empty)") : harmless(value);
}

void listText(const SettingsFile& file) {
  std::cout << say("Archivo: ", "File: ") << harmless(file.path())
            << (file.exists() ? "" : say(" (todavía no existe)", " (not there yet)")) << "\n";
  if (!systemSettingsPath().empty())
    std::cout << say("Para todos los usuarios: ", "For all users: ") << systemSettingsPath() << "\n";
  std::string section;
  for (const KnownSetting& setting : knownSettings()) {
    if (setting.section != section) std::cout << "\n[" << (section = setting.section) << "]\n";
    const Held held = heldBy(setting);
    std::cout << terminal::padded(setting.key, 22) << terminal::padded(shown(held.value), 24)
              << sourceInWords(held.source) << '\n';
    std::string meaning =
        setting.section == portSection && setting.key.starts_with("COM")
            ? say("dispositivo del puerto serial {}", "device of serial port {}", {setting.key.substr(3)})
            : inLanguage(setting.meaning);
    if (held.source != "default")
      meaning += say(" (de fábrica: {})", " (default: {})", {shown(setting.fallback)});
    for (const std::string& line : terminal::wrapped("    " + meaning, terminal::screenColumns(), "    "))
      std::cout << line << '\n';
  }
}

void listJson(const SettingsFile& file) {
  Json settings = Json::array();
  for (const KnownSetting& setting : knownSettings()) {
    const Held held = heldBy(setting);
    settings.push_back({{"section", setting.section},
                        {"key", setting.key},
                        {"value", held.value},
                        {"source", held.source},
                        {"default", setting.fallback},
                        {"meaning", setting.meaning}});
  }
  std::cout << terminal::whole(
      jsonPage({{"file", file.path()}, {"exists", file.exists()}, {"settings", settings}}));
}

int list(const SettingsOptions& options) {
  const SettingsFile file(settingsPath());
  (options.isJson ? listJson : listText)(file);
  return exitDone;
}

int get(const SettingsOptions& options) {
  std::cout << heldBy(settingNamed(options.key)).value << '\n';
  return exitDone;
}

// "ttyUSB0" is how the kernel calls it, and "sí" how a person switches a trace on.
std::string meantValue(const KnownSetting& setting, const std::string& value) {
  const bool isSwitch = setting.key == settingObjectTrace.key || setting.key == settingDriverTrace.key ||
                        setting.key == settingSuppressDecimals.key;
  const auto isOneOf = [&](std::initializer_list<std::string_view> words) {
    return std::ranges::any_of(words, [&](std::string_view word) { return equalIgnoringCase(word, value); });
  };
  if (isSwitch && isOneOf({"1", "si", "sí", "yes", "on", "true", "verdadero"})) return "1";
  if (isSwitch && isOneOf({"0", "no", "off", "false", "falso"})) return "0";
  if (isSwitch && value.find_first_not_of("0123456789") != std::string::npos)
    throw std::runtime_error(say("{} es 1 (sí) o 0 (no), no \"{}\"; nada se cambió",
                                 "{} is 1 (yes) or 0 (no), not \"{}\"; nothing was changed",
                                 {setting.key, value}));
  const bool isPort = setting.section == portSection && setting.key.starts_with("COM");
  return isPort && value.starts_with("tty") ? "/dev/" + value : value;
}

SettingsFile fileFor(const SettingsOptions& options) {
  return SettingsFile(options.isForMachine ? systemSettingsPath() : settingsPath());
}

int set(const SettingsOptions& options) {
  const KnownSetting setting = settingNamed(options.key);
  const std::string value = meantValue(setting, options.value);
  checkValue(setting, value);
  fileFor(options).set(setting.section, setting.key, value);
  return exitDone;
}

int unset(const SettingsOptions& options) {
  const KnownSetting setting = settingNamed(options.key);
  fileFor(options).remove(setting.section, setting.key);
  return exitDone;
}

void addAction(CLI::App& action, const std::shared_ptr<SettingsOptions>& options, int& status,
               int (*run)(const SettingsOptions&)) {
  action.callback([options, run, &status] { status = guarded([&] { return run(*options); }); });
}

}  // namespace

void addSettingsCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<SettingsOptions>();
  const std::string key = say("CLAVE", "KEY");
  CLI::App* command = app.add_subcommand(
      "settings", say("Muestra y cambia la configuración", "Show and change the settings"));
  command->require_subcommand(1);

  CLI::App* listing = command->add_subcommand(
      "list", say("Todas las claves: valor y significado", "All settings: value, default, meaning"));
  listing->add_flag("--json", options->isJson, say("Como JSON", "As JSON"));
  addAction(*listing, options, status, list);

  CLI::App* getting = command->add_subcommand("get", say("Un valor", "One value"));
  getting->add_option(key, options->key, "TimeOutZT, COM1, ...")->required()->type_name("");
  addAction(*getting, options, status, get);

  CLI::App* setting = command->add_subcommand(
      "set", say("Cambia un valor en el archivo de configuración", "Change one value in the settings file"));
  setting->add_option(key, options->key, "TimeOutZT, COM1, ...")->required()->type_name("");
  setting->add_option(say("VALOR", "VALUE"), options->value, say("El valor nuevo", "The new value, as text"))
      ->required()
      ->type_name("");
  addAction(*setting, options, status, set);

  CLI::App* unsetting = command->add_subcommand("unset", say("Quita un valor: vale otra vez el de fábrica",
                                                             "Take a value out: the default holds again"));
  unsetting->add_option(key, options->key, "TimeOutZT, COM1, ...")->required()->type_name("");
  addAction(*unsetting, options, status, unset);

  if (systemSettingsPath().empty()) return;
  for (CLI::App* change : {setting, unsetting})
    change->add_flag("--system", options->isForMachine,
                     say("Para todos los usuarios de la máquina; lo que puso el usuario vale más",
                         "For all users of the machine; what the user has set counts more"));
}

}  // namespace zentaro::tools
