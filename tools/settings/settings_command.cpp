// The user's settings on the command line.
#include "settings/settings_command.h"

#include <iomanip>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "common/guarded.h"
#include "common/json.h"
#include "common/known_settings.h"
#include "platform/system_paths.h"
#include "settings/settings_file.h"
#include "text/ascii.h"

namespace zentaro::tools {

namespace {

struct Options {
  bool isJson = false;
  std::string key, value;
};

KnownSetting settingNamed(const std::string& key) {
  std::string names;
  for (const KnownSetting& setting : knownSettings()) {
    if (equalIgnoringCase(setting.key, key)) return setting;
    names += " " + setting.key;
  }
  throw std::runtime_error("no setting \"" + key + "\": there are" + names);
}

std::string valueIn(const SettingsFile& file, const KnownSetting& setting) {
  return file.settings().value(setting.section, setting.key).value_or(setting.fallback);
}

std::string sourceOf(const SettingsFile& file, const KnownSetting& setting) {
  return file.settings().value(setting.section, setting.key) ? "set" : "default";
}

void checkValue(const KnownSetting& setting, const std::string& value) {
  if (isAcceptable(setting, value)) return;
  throw std::runtime_error(setting.key + " must be a whole number from " + std::to_string(setting.lowest) +
                           " to " + std::to_string(setting.highest) + ", not \"" + value +
                           "\"; nothing was changed");
}

std::string shown(const std::string& value) { return value.empty() ? "(empty)" : value; }

void listText(const SettingsFile& file) {
  std::cout << "File: " << file.path() << (file.exists() ? "" : " (not there yet)") << "\n";
  std::string section;
  for (const KnownSetting& setting : knownSettings()) {
    if (setting.section != section) std::cout << "\n[" << (section = setting.section) << "]\n";
    std::cout << std::left << std::setw(22) << setting.key << std::setw(20) << shown(valueIn(file, setting))
              << ' ' << std::setw(8) << sourceOf(file, setting) << ' ' << setting.meaning;
    if (sourceOf(file, setting) == "set") std::cout << " (default: " << shown(setting.fallback) << ")";
    std::cout << '\n';
  }
}

void listJson(const SettingsFile& file) {
  Json settings = Json::array();
  for (const KnownSetting& setting : knownSettings()) {
    settings.push_back({{"section", setting.section},
                        {"key", setting.key},
                        {"value", valueIn(file, setting)},
                        {"source", sourceOf(file, setting)},
                        {"default", setting.fallback},
                        {"meaning", setting.meaning}});
  }
  std::cout << jsonPage({{"file", file.path()}, {"exists", file.exists()}, {"settings", settings}});
}

int list(const Options& options) {
  const SettingsFile file(settingsPath());
  (options.isJson ? listJson : listText)(file);
  return exitDone;
}

int get(const Options& options) {
  std::cout << valueIn(SettingsFile(settingsPath()), settingNamed(options.key)) << '\n';
  return exitDone;
}

int set(const Options& options) {
  const KnownSetting setting = settingNamed(options.key);
  checkValue(setting, options.value);
  SettingsFile(settingsPath()).set(setting.section, setting.key, options.value);
  return exitDone;
}

void addAction(CLI::App& action, const std::shared_ptr<Options>& options, int& status,
               int (*run)(const Options&)) {
  action.callback([options, run, &status] { status = guarded([&] { return run(*options); }); });
}

}  // namespace

void addSettingsCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<Options>();
  CLI::App* command = app.add_subcommand("settings", "Show and change the user's settings");
  command->require_subcommand(1);

  CLI::App* listing = command->add_subcommand("list", "All settings: value, default, meaning");
  listing->add_flag("--json", options->isJson, "As JSON");
  addAction(*listing, options, status, list);

  CLI::App* getting = command->add_subcommand("get", "One value");
  getting->add_option("KEY", options->key, "TimeOutZT, COM1, ...")->required()->type_name("");
  addAction(*getting, options, status, get);

  CLI::App* setting = command->add_subcommand("set", "Change one value in the settings file");
  setting->add_option("KEY", options->key, "TimeOutZT, COM1, ...")->required()->type_name("");
  setting->add_option("VALUE", options->value, "The new value, as text")->required()->type_name("");
  addAction(*setting, options, status, set);
}

}  // namespace zentaro::tools
