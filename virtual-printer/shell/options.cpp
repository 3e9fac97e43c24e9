// The command line, read with CLI11.
#include "shell/options.h"

#include <CLI/CLI.hpp>
#include <cmath>

#include "device/commands.h"

namespace printer {
namespace {

std::string footer() {
  std::string text =
      "\nFault plans: EFFECT[=VALUE] [on COMMAND,...] [after N] [chance P%] [once | times N | always]; "
      "...\n\nEffects:\n";
  for (const EffectEntry& entry : effectTable()) {
    std::string name = entry.name;
    if (entry.value == ValueKind::seconds) name += "=SECONDS";
    if (entry.value == ValueKind::bytes) name += "=BYTES";
    if (entry.value == ValueKind::place) name += "=before|inside";
    text += "  " + name + std::string(name.size() < 22 ? 22 - name.size() : 1, ' ') + entry.help + "\n";
  }
  text += "\nCommands:\n ";
  for (const CommandEntry& entry : commandTable()) text += " " + std::string{entry.name};
  return text +
         "\n\nWhile it runs, \"help\" on standard input or on the control socket lists what can be "
         "changed.\n";
}

std::string checkSerial(const std::string& serial) {
  const bool isGood = !serial.empty() && serial.size() <= 20 &&
                      serial.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789") == std::string::npos;
  return isGood ? std::string{} : "the serial number is 1 to 20 capital letters and digits";
}

}  // namespace

std::variant<Options, int> parseOptions(int count, const char* const* words) {
  Options options;
  std::vector<std::string> plans;
  double igtfPercent = 3;
  bool isRealtime = false;
  CLI::App app{"zentaro-printer: a fiscal printer in software, on a pseudo-terminal."};
  app.footer(footer);
  app.add_option("--link", options.link, "Put a symbolic link to the device at PATH; removed at the end")
      ->type_name("PATH");
  app.add_option("--state", options.state, "Keep counters, totals and Z records in FILE (JSON)")
      ->type_name("FILE");
  app.add_option("--paper", options.paper, "Draw the paper into FILE.txt, FILE.svg or FILE.html")
      ->type_name("FILE");
  app.add_option("--fault", plans, "Disturb line or device; may be given several times")
      ->type_name("PLAN")
      ->allow_extra_args(false);
  app.add_option("--seed", options.seed, "Seed of the probabilities in fault plans (1)")->type_name("N");
  app.add_option("--log", options.log, "Append every frame and fault to FILE, one JSON object a line")
      ->type_name("FILE");
  app.add_option("--control", options.control, "Take control lines on a local socket at PATH")
      ->type_name("PATH");
  std::string web;
  CLI::Option* webOption =
      app.add_option("--web", web, "Show the printer on a web page; 127.0.0.1:8210 unless told otherwise")
          ->type_name("[ADDRESS:]PORT")
          ->expected(0, 1);
  app.add_flag("--open", options.opensBrowser, "Open the page in the browser, where there is one")
      ->needs(webOption);
  app.add_flag("--realtime", isRealtime, "As slow as 9600 baud and a printing head are");
  app.add_flag("--quiet", options.isQuiet, "Do not show the paper on standard output");
  app.add_option("--rif", options.identity.owner.rif, "RIF of the owner")->type_name("TEXT");
  app.add_option("--owner", options.identity.owner.name, "Name of the owner")->type_name("TEXT");
  app.add_option("--serial", options.identity.owner.serial, "Serial number of the machine")
      ->type_name("TEXT")
      ->check(checkSerial);
  app.add_option("--igtf", igtfPercent, "IGTF rate in percent (3)")
      ->type_name("PERCENT")
      ->check(CLI::Range(0.0, 99.99));
  try {
    app.parse(count, words);
    for (const std::string& plan : plans)
      for (const Fault& fault : parsePlan(plan)) options.faults.push_back(fault);
    if (webOption->count() > 0) options.web = parseWebAddress(web);
  } catch (const CLI::ParseError& error) {
    return app.exit(error);
  }
  options.identity.igtfRate = static_cast<Rate>(std::lround(igtfPercent * 100));
  options.speed = isRealtime ? Speed::realtime : Speed::immediate;
  return options;
}

}  // namespace printer
