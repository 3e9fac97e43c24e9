// From the books, and where a printer is named, from it as well.
#include "tools/today/today_command.h"

#include <CLI/CLI.hpp>
#include <ctime>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "base/files/json.h"
#include "base/files/paths.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "till/books/books.h"
#include "till/words/moments.h"
#include "tools/show/guarded.h"
#include "tools/today/day_words.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;
using till::Moment;

namespace {

struct TodayOptions {
  PortOptions port;
  std::string day, from, to;
  bool isJson = false, isCsv = false;
};

std::string dayOf(Moment moment) { return till::dayAndTime(moment).substr(0, sizeof "2026-01-31" - 1); }

/// The local midnight at which the day begins, or so many days later.
Moment midnight(const std::string& day, int later = 0) {
  std::tm parts{};
  std::istringstream text(day);
  text.imbue(std::locale::classic());
  text >> std::get_time(&parts, "%Y-%m-%d");
  if (text.fail() || text.peek() != std::istringstream::traits_type::eof())
    throw std::runtime_error(say("\"{}\" no es un día; escriba año-mes-día: 2026-01-31",
                                 "\"{}\" is no day; write year-month-day: 2026-01-31", {harmless(day)}));
  parts.tm_mday += later;
  parts.tm_isdst = -1;
  return std::mktime(&parts);
}

Range rangeOf(const TodayOptions& options) {
  const std::string today = dayOf(std::time(nullptr));
  Range range;
  range.from = !options.from.empty() ? options.from : !options.day.empty() ? options.day : today;
  range.to = !options.to.empty() ? options.to : !options.from.empty() ? today : range.from;
  range.begin = midnight(range.from);
  range.end = midnight(range.to, 1);
  if (range.end <= range.begin)
    throw std::runtime_error(say("el rango termina antes de empezar: {} a {}",
                                 "the range ends before it begins: {} to {}", {range.from, range.to}));
  return range;
}

DayFigures fromBooks(const Range& range) {
  const std::string path = till::booksPath();
  if (!std::filesystem::exists(files::pathOf(path))) return {};
  return figuresOf(till::Books(path).begunBetween(range.begin, range.end));
}

int runToday(const TodayOptions& options) {
  const Range range = rangeOf(options);
  const DayFigures figures = fromBooks(range);
  const bool asksPrinter = options.port.port || !options.port.device.empty() || options.port.isVirtual;
  std::optional<PrinterDay> printer;
  if (asksPrinter) printer = askPrinter(options.port);
  if (options.isJson)
    std::cout << terminal::whole(jsonPage(dayJson(range, figures, printer)));
  else
    std::cout << (options.isCsv ? dayCsv(range, figures) : dayText(range, figures, printer));
  return figures.unknown.empty() ? exitDone : exitRefused;
}

}  // namespace

void addTodayCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<TodayOptions>();
  CLI::App* command = app.add_subcommand(say("hoy", "today"),
                                         say("Dice qué se vendió hoy, o en otros días, según los libros",
                                             "Tell what was sold today, or on other days, by the books"));
  command->alias(say("today", "hoy"));
  CLI::Option* day =
      command->add_option("--day", options->day, say("Otro día", "Another day"))->type_name("2026-01-31");
  CLI::Option* from = command->add_option("--from", options->from, say("Desde este día", "From this day on"))
                          ->excludes(day)
                          ->type_name("2026-01-01");
  command
      ->add_option("--to", options->to, say("Hasta este día; si no, hasta hoy", "To this day; else to today"))
      ->needs(from)
      ->type_name("2026-01-31");
  CLI::Option* json = command->add_flag("--json", options->isJson, say("Como JSON", "As JSON"));
  command
      ->add_flag("--csv", options->isCsv,
                 say("Como CSV, para una hoja de cálculo", "As CSV, for a spreadsheet"))
      ->excludes(json);
  addPortOptions(*command, options->port);
  command->footer(say(
      "Con --port o --device dice también los montos de la impresora desde su último Z, sin imprimir nada. "
      "Estado de salida: 0 hecho, 1 hay ventas de las que no se sabe si se imprimieron, 2 no se pudo mirar.",
      "With --port or --device it tells the printer's figures since its last Z, too, and prints nothing. "
      "Exit status: 0 done, 1 there are sales of which nobody knows whether they were printed, 2 it could not look."));
  command->callback([options, &status] { status = guarded([&] { return runToday(*options); }); });
}

}  // namespace zentaro::tools
