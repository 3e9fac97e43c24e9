// The command line, read with CLI11.
#include "virtual-printer/shell/options.h"

#include <CLI/CLI.hpp>
#include <cmath>

#include "base/terminal/command_line.h"
#include "base/terminal/language.h"
#include "virtual-printer/device/commands.h"
#include "virtual-printer/fiscal/calendar.h"

namespace virtual_printer {
namespace {

using zentaro::terminal::say;

std::string nameWithValue(const EffectEntry& entry) {
  switch (entry.value) {
    case ValueKind::Seconds: return entry.name + say("=SEGUNDOS", "=SECONDS");
    case ValueKind::Bytes: return std::string{entry.name} + "=BYTES";
    case ValueKind::Place: return std::string{entry.name} + "=before|inside";
    case ValueKind::None: break;
  }
  return entry.name;
}

std::string footer() {
  std::string page =
      say("\nUn plan de fallas: EFECTO[=VALOR] [on COMANDO,...] [after N] [chance P%]\n"
          "                   [once | times N | always]; ...\n\nEfectos:\n",
          "\nA fault plan: EFFECT[=VALUE] [on COMMAND,...] [after N] [chance P%]\n"
          "              [once | times N | always]; ...\n\nEffects:\n");
  for (const EffectEntry& entry : effectTable()) {
    const std::string name = nameWithValue(entry);
    page += "  " + name + std::string(name.size() < 20 ? 20 - name.size() : 1, ' ') +
            say(entry.ayuda, entry.help) + "\n";
  }
  page += say("\nComandos:", "\nCommands:");
  std::size_t column = 80;
  for (const CommandEntry& entry : commandTable()) {
    const std::string name = entry.name;
    column += 1 + name.size();
    if (column > 78) page += "\n ";
    if (column > 78) column = 2 + name.size();
    page += " " + name;
  }
  return page + say("\n\nMientras funciona, \"help\" en la entrada estándar o en el socket de control dice\n"
                    "qué se puede cambiar; \"zentaro printer tell SOCKET LÍNEA\" se lo dice al socket.\n",
                    "\n\nWhile it runs, \"help\" on standard input or on the control socket lists what can\n"
                    "be changed; \"zentaro printer tell SOCKET LINE\" says it to the socket.\n");
}

// Told by us: the parser would write it after each of the options in the help, too.
void refuseTogether(const CLI::App& app, std::initializer_list<const char*> options) {
  const char* given = nullptr;
  for (const char* option : options) {
    if (app.count(option) == 0) continue;
    if (given != nullptr) throw CLI::ExcludesError(given, option);
    given = option;
  }
}

std::string checkPercent(const std::string& given) {
  double percent = -1;
  const bool isGood = CLI::detail::lexical_cast(given, percent) && percent >= 0 && percent <= 99.99;
  return isGood ? std::string{}
                : say("se espera un porcentaje de 0 a 99.99", "a percentage from 0 to 99.99 is expected");
}

std::string checkSerial(const std::string& serial) {
  const bool isGood = !serial.empty() && serial.size() <= 20 &&
                      serial.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789") == std::string::npos;
  return isGood ? std::string{}
                : say("el serial tiene de 1 a 20 letras mayúsculas y cifras",
                      "the serial number is 1 to 20 capital letters and digits");
}

// To the minute or to the second; in the century that the printer's clock knows.
LocalTime readClock(const std::string& given) {
  constexpr std::size_t toTheMinute = sizeof "2026-01-01T10:00" - 1;
  const auto time = fromStamp(given.size() == toTheMinute ? given + ":00" : given);
  const bool isKnown = time && written(*time, "%Y").starts_with("20");
  if (!isKnown)
    throw CLI::ValidationError("--clock", say("se espera una hora como 2026-01-31T14:05",
                                              "a time like 2026-01-31T14:05 is expected"));
  return *time;
}

void addLine(CLI::App& app, Options& options) {
  app.add_option("--link", options.link,
                 say("Enlace simbólico al dispositivo; se quita al final",
                     "Symbolic link to the device; removed at the end"))
      ->type_name(say("RUTA", "PATH"));
  app.add_option_function<std::string>(
         "--tcp",
         [&](const std::string& given) { options.tcp = zentaro::system::parseAddress("--tcp", given); },
         say("La línea por TCP (127.0.0.1) y no en un pseudoterminal",
             "The line over TCP (127.0.0.1), not a pseudo-terminal"))
      ->type_name(say("[DIRECCIÓN:]PUERTO", "[ADDRESS:]PORT"));
  app.add_option("--paper", options.papers,
                 say("Dibuja el papel en ARCHIVO (.txt, .svg o .html)",
                     "Draw the paper into FILE (.txt, .svg or .html)"))
      ->type_name(say("ARCHIVO", "FILE"))
      ->allow_extra_args(false);
  app.add_flag("--temporary", options.isTemporary,
               say("Enlace y papel en carpeta propia; se borra al final",
                   "Link and paper in a folder of its own, removed at the end"));
  app.add_flag_callback(
      "--realtime", [&] { options.speed = Speed::Realtime; },
      say("Tan lenta como 9600 baudios y un cabezal", "As slow as 9600 baud and a printing head are"));
}

void addFiles(CLI::App& app, Options& options) {
  const std::string file = say("ARCHIVO", "FILE");
  app.add_option(
         "--state", options.state,
         say("Guarda contadores, totales y registros Z (JSON)", "Keep counters, totals and Z records (JSON)"))
      ->type_name(file);
  app.add_option("--log", options.log,
                 say("Anota cada trama y cada falla, un objeto JSON por línea",
                     "Append every frame and fault, one JSON object a line"))
      ->type_name(file);
  app.add_option("--control", options.control,
                 say("Recibe líneas de control en un socket local", "Take control lines on a local socket"))
      ->type_name(say("RUTA", "PATH"));
  app.add_flag("--quiet", options.isQuiet,
               say("No muestra el papel en la salida estándar", "Do not show the paper on standard output"));
}

void addWeb(CLI::App& app, Options& options) {
  CLI::Option* web = app.add_option_function<std::string>(
                            "--web",
                            [&](const std::string& given) {
                              options.web =
                                  zentaro::system::parseAddress("--web", given.empty() ? "8210" : given);
                            },
                            say("La impresora en una página web (127.0.0.1:8210)",
                                "The printer on a web page (127.0.0.1:8210)"))
                         ->type_name(say("[[DIRECCIÓN:]PUERTO]", "[[ADDRESS:]PORT]"))
                         ->expected(0, 1);
  app.add_flag(
         "--open", options.opensBrowser,
         say("Abre la página en el navegador, si lo hay", "Open the page in the browser, where there is one"))
      ->needs(web);
}

void addFaults(CLI::App& app, Options& options) {
  app.add_option_function<std::vector<std::string>>(
         "--fault",
         [&](const std::vector<std::string>& plans) {
           for (const std::string& plan : plans)
             for (const Fault& fault : parsePlan(plan)) options.faults.push_back(fault);
         },
         say("Perturba la línea o el equipo; varias veces si se quiere",
             "Disturb line or device; may be given several times"))
      ->type_name("PLAN")
      ->allow_extra_args(false);
  app.add_option("--seed", options.seed,
                 say("Semilla de las probabilidades de las fallas (1)",
                     "Seed of the probabilities in fault plans (1)"))
      ->type_name("N");
  app.add_option_function<std::string>(
         "--clock", [&](const std::string& given) { options.clock = readClock(given); },
         say("Un reloj detenido, para comparar el papel", "A clock that stands still, to compare the paper"))
      ->type_name(say("HORA", "TIME"));
}

void addIdentity(CLI::App& app, Options& options) {
  Owner& owner = options.identity.owner;
  const std::string word = say("TEXTO", "TEXT");
  app.add_option("--rif", owner.rif, say("RIF del dueño", "RIF of the owner"))->type_name(word);
  app.add_option("--owner", owner.name, say("Nombre del dueño", "Name of the owner"))->type_name(word);
  app.add_option("--serial", owner.serial, say("Serial de la máquina", "Serial number of the machine"))
      ->type_name(word)
      ->check(checkSerial);
  app.add_option_function<double>(
         "--igtf",
         [&](double percent) { options.identity.igtfRate = static_cast<Rate>(std::lround(percent * 100)); },
         say("Alícuota del IGTF en por ciento (3)", "IGTF rate in percent (3)"))
      ->type_name(say("PORCENTAJE", "PERCENT"))
      ->check(checkPercent);
}

}  // namespace

std::variant<Options, int> parseOptions(int count, const char* const* words) {
  zentaro::terminal::chooseLanguage(count, words);
  Options options;
  CLI::App app{say("zentaro-printer: una impresora fiscal en software, por pseudoterminal o TCP.",
                   "zentaro-printer: a fiscal printer in software, on a pseudo-terminal or over TCP."),
               "zentaro-printer"};
  zentaro::terminal::speakTheLanguage(app);
  app.footer(footer);
  app.get_formatter()->column_width(23);
  addLine(app, options);
  addFiles(app, options);
  addWeb(app, options);
  addFaults(app, options);
  addIdentity(app, options);
  try {
    app.parse(count, words);
    refuseTogether(app, {"--link", "--tcp"});
    refuseTogether(app, {"--link", "--temporary"});
  } catch (const CLI::ParseError& error) {
    return app.exit(error);
  }
  return options;
}

}  // namespace virtual_printer
