// From the books, and where a printer is named, from it as well.
#include "tools/today/today_command.h"

#include <CLI/CLI.hpp>
#include <array>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "base/files/json.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "till/books/books.h"
#include "tools/connection/connection.h"
#include "tools/show/guarded.h"
#include "tools/today/day_figures.h"
#include "zentaro.h"

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

struct Range {
  std::string from, to;       // days, both included
  Moment begin = 0, end = 0;  // of the local clock
};

std::string dayText(std::time_t moment) {
  std::tm parts{};
  ::localtime_r(&moment, &parts);
  std::array<char, sizeof "2026-01-31"> text{};
  return {text.data(), std::strftime(text.data(), text.size(), "%F", &parts)};
}

/// The local midnight at which the day begins, or so many days later.
Moment midnight(const std::string& day, int later = 0) {
  std::tm parts{};
  const char* end = ::strptime(day.c_str(), "%Y-%m-%d", &parts);
  if (end == nullptr || *end != '\0')
    throw std::runtime_error(say("\"{}\" no es un día; escriba año-mes-día: 2026-01-31",
                                 "\"{}\" is no day; write year-month-day: 2026-01-31", {harmless(day)}));
  parts.tm_mday += later;
  parts.tm_isdst = -1;
  return ::mktime(&parts);
}

Range rangeOf(const TodayOptions& options) {
  const std::string today = dayText(std::time(nullptr));
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
  if (!std::filesystem::exists(path)) return {};
  return figuresOf(till::Books(path).begunBetween(range.begin, range.end));
}

/// The printer's own day, since its last Z.
struct PrinterDay {
  std::string serialNumber;
  int lastZ = 0, lastInvoice = 0;
  std::int64_t net = 0, tax = 0, returned = 0;  // cents, without IGTF
};

std::int64_t centsOf(Currency amount) { return std::llround(amount.toDouble() * 100); }

PrinterDay askPrinter(const PortOptions& port) {
  Connection connection(port);
  CZentaro& printer = connection.printer();
  printer.verifyCheckSum = true;
  connection.line().startAnywhere();
  connection.line().getInStep();
  PrinterDay day;
  statusN status;
  status.LoadFromResponse(printer.getResponse(0));
  day.lastZ = status.UltimoCierreZ();
  day.serialNumber = utf8(printer.SerialImpresora());
  printer.RealizarCierre(CIERRE_X, false);
  if (printer.nEnvironmentError != ENVERR_OK)
    throw std::runtime_error(say("la impresora no da los montos del día: {}",
                                 "the printer does not give the day's figures: {}",
                                 {harmless(utf8(printer.EnvironmentError()))}));
  ResultadoCierre figures;
  figures.LoadFromParams(printer.getResponse(0));
  for (const Currency amount :
       {figures.VentasExentas, figures.BaseGravable1, figures.BaseGravable2, figures.BaseGravable3})
    day.net += centsOf(amount);
  for (const Currency amount : {figures.Impuesto1, figures.Impuesto2, figures.Impuesto3})
    day.tax += centsOf(amount);
  for (const Currency amount :
       {figures.MontoExentoNC, figures.ValorNCBase1, figures.ValorNCBase2, figures.ValorNCBase3})
    day.returned += centsOf(amount);
  day.lastInvoice = figures.numeroUltimaFactura;
  return day;
}

std::string row(std::string_view name, const std::string& value) {
  constexpr std::size_t widestName = 24, widestAmount = 20;
  return terminal::padded(std::string(name), widestName) + terminal::paddedLeft(value, widestAmount) + "\n";
}

std::string soldText(std::string_view title, const Sold& sold) {
  std::string text = row(title, std::to_string(sold.documents));
  if (sold.documents == 0) return text;
  text += row(say("  sin impuesto", "  net"), paperAmount(sold.net));
  if (sold.tax != 0 || sold.taxOrIgtf == 0) text += row(say("  impuesto", "  tax"), paperAmount(sold.tax));
  if (sold.igtf != 0) text += row("  IGTF", paperAmount(sold.igtf));
  if (sold.taxOrIgtf != 0)
    text += row(say("  impuesto e IGTF", "  tax and IGTF"), paperAmount(sold.taxOrIgtf));
  return text + row("  total Bs", paperAmount(sold.total()));
}

std::string text(const Range& range, const DayFigures& figures, const std::optional<PrinterDay>& printer) {
  std::string page = range.from == range.to
                         ? say("Ventas del {}\n", "Sales of {}\n", {range.from})
                         : say("Ventas del {} al {}\n", "Sales from {} to {}\n", {range.from, range.to});
  page += soldText(say("Facturas", "Invoices"), figures.invoices);
  page += soldText(say("Notas de crédito", "Credit notes"), figures.returns);
  page += row(say("Queda, total Bs", "Remains, total Bs"),
              paperAmount(figures.invoices.total() - figures.returns.total()));
  for (const till::Job& job : figures.unknown)
    page += say("NO SE SABE si se imprimió: {} (Bs {}); mire el papel\n",
                "NOT KNOWN whether it was printed: {} (Bs {}); look at the paper\n",
                {harmless(job.id.empty() ? "#" + std::to_string(job.key) : job.id), paperAmount(job.total)});
  if (figures.lastZ && figures.lastZ->number)
    page += row(say("Último Z", "Last Z"), std::to_string(*figures.lastZ->number));
  if (!printer) return page;
  page += say("\nLa impresora {}, desde su Z {}\n", "\nThe printer {}, since its Z {}\n",
              {harmless(printer->serialNumber), std::to_string(printer->lastZ)});
  page += row(say("  sin impuesto", "  net"), paperAmount(printer->net));
  page += row(say("  impuesto", "  tax"), paperAmount(printer->tax));
  page += row(say("  devuelto, sin impuesto", "  returned, net"), paperAmount(printer->returned));
  return page + row(say("  última factura", "  last invoice"), std::to_string(printer->lastInvoice));
}

Json jsonOf(const Sold& sold) {
  const auto amount = [](std::int64_t cents) { return decimalText(cents, 2); };
  return {{"documents", sold.documents},
          {"net", amount(sold.net)},
          {"tax", amount(sold.tax)},
          {"igtf", amount(sold.igtf)},
          {"taxOrIgtf", amount(sold.taxOrIgtf)},
          {"total", amount(sold.total())}};
}

Json jsonOf(const Range& range, const DayFigures& figures, const std::optional<PrinterDay>& printer) {
  Json unknown = Json::array();
  for (const till::Job& job : figures.unknown)
    unknown.push_back({{"id", job.id}, {"total", decimalText(job.total, 2)}});
  Json page{{"from", range.from},
            {"to", range.to},
            {"invoices", jsonOf(figures.invoices)},
            {"creditNotes", jsonOf(figures.returns)},
            {"unknown", unknown},
            {"lastZ", figures.lastZ && figures.lastZ->number ? Json(*figures.lastZ->number) : Json()}};
  if (printer)
    page["printer"] = {
        {"serialNumber", printer->serialNumber}, {"lastZ", printer->lastZ},
        {"lastInvoice", printer->lastInvoice},   {"net", decimalText(printer->net, 2)},
        {"tax", decimalText(printer->tax, 2)},   {"returned", decimalText(printer->returned, 2)}};
  return page;
}

// A line a kind of document, for a spreadsheet.
std::string csvOf(const Range& range, const DayFigures& figures) {
  std::string csv = "from,to,kind,documents,net,tax,igtf,tax_or_igtf,total\n";
  for (const auto& [kind, sold] :
       {std::pair("invoices", &figures.invoices), std::pair("credit-notes", &figures.returns)}) {
    csv += range.from + "," + range.to + "," + kind + "," + std::to_string(sold->documents);
    for (const std::int64_t cents : {sold->net, sold->tax, sold->igtf, sold->taxOrIgtf, sold->total()})
      csv += "," + decimalText(cents, 2);
    csv += "\n";
  }
  return csv + range.from + "," + range.to + ",unknown," + std::to_string(figures.unknown.size()) + ",,,,,\n";
}

int runToday(const TodayOptions& options) {
  const Range range = rangeOf(options);
  const DayFigures figures = fromBooks(range);
  const bool asksPrinter = options.port.port || !options.port.device.empty() || options.port.isVirtual;
  std::optional<PrinterDay> printer;
  if (asksPrinter) printer = askPrinter(options.port);
  if (options.isJson)
    std::cout << jsonPage(jsonOf(range, figures, printer));
  else
    std::cout << (options.isCsv ? csvOf(range, figures) : text(range, figures, printer));
  return figures.unknown.empty() ? exitDone : exitRefused;
}

}  // namespace

void addTodayCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<TodayOptions>();
  const auto words = [](std::string_view spanish, std::string_view english) {
    return std::string(say(spanish, english));
  };
  CLI::App* command = app.add_subcommand(words("hoy", "today"),
                                         words("Dice qué se vendió hoy, o en otros días, según los libros",
                                               "Tell what was sold today, or on other days, by the books"));
  command->alias(words("today", "hoy"));
  CLI::Option* day =
      command->add_option("--day", options->day, words("Otro día", "Another day"))->type_name("2026-01-31");
  CLI::Option* from =
      command->add_option("--from", options->from, words("Desde este día", "From this day on"))
          ->excludes(day)
          ->type_name("2026-01-01");
  command
      ->add_option("--to", options->to,
                   words("Hasta este día; si no, hasta hoy", "To this day; else to today"))
      ->needs(from)
      ->type_name("2026-01-31");
  CLI::Option* json = command->add_flag("--json", options->isJson, words("Como JSON", "As JSON"));
  command
      ->add_flag("--csv", options->isCsv,
                 words("Como CSV, para una hoja de cálculo", "As CSV, for a spreadsheet"))
      ->excludes(json);
  addPortOptions(*command, options->port);
  command->footer(words(
      "Con --port o --device dice también los montos de la impresora desde su último Z, sin imprimir nada. "
      "Estado de salida: 0 hecho, 1 hay ventas de las que no se sabe si se imprimieron, 2 no se pudo mirar.",
      "With --port or --device it tells the printer's figures since its last Z, too, and prints nothing. "
      "Exit status: 0 done, 1 there are sales of which nobody knows whether they were printed, 2 it could not look."));
  command->callback([options, &status] { status = guarded([&] { return runToday(*options); }); });
}

}  // namespace zentaro::tools
