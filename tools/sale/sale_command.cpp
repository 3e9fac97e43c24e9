// Reads the file, checks all of it, opens the port and prints.
#include "sale/sale_command.h"

#include <iostream>
#include <memory>

#include "common/connection.h"
#include "common/guarded.h"
#include "common/read_input.h"
#include "sale/print_sale.h"
#include "sale/sale_file.h"
#include "sale/verdict.h"
#include "terminal/harmless.h"
#include "terminal/language.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

struct Options {
  std::string file;
  PortOptions port;
  std::vector<std::string> faults;
  bool isCheckOnly = false, isJson = false;
};

int refuse(const std::string& file, const Problems& problems) {
  for (const Problem& problem : problems)
    std::cerr << harmless(file + ": " + problem.path + (problem.path.empty() ? "" : ": ") + problem.text)
              << '\n';
  std::cerr << say("No se envió nada a la impresora.\n", "Nothing was sent to the printer.\n");
  return exitFailed;
}

void showTotals(const Sale& sale, const Totals& totals) {
  std::cout << (sale.isCreditNote ? say("nota de crédito", "credit note") : say("factura", "invoice"))
            << say(": neto {}, impuesto {}, total {}, IGTF {}, pagado {}, vuelto {}\n",
                   ": net {}, tax {}, total {}, IGTF {}, paid {}, change {}\n",
                   {centsText(totals.net), centsText(totals.tax), centsText(totals.total()),
                    centsText(totals.igtf), centsText(totals.paid), centsText(totals.change())});
}

std::vector<std::string> printerWords(const std::vector<std::string>& faults) {
  std::vector<std::string> words;
  for (const std::string& fault : faults) words.insert(words.end(), {"--fault", fault});
  return words;
}

// What a second signal says: by then nobody knows how far the sale is.
std::string lastWords(const Connection& connection) {
  return say(
      "\nzentaro: interrumpido en medio de una venta: puede haber un documento abierto, o impreso. Mire el "
      "papel; si termina por la mitad: zentaro call {} CancelarComprobante\n",
      "\nzentaro: ended in the middle of a sale: a document may be open, or printed. Look at the paper; if "
      "it ends in the middle: zentaro call {} CancelarComprobante\n",
      {connection.portWords()});
}

// A standard output that is closed or full must not keep the verdict from anybody.
void tell(const std::string& text, bool isGood) {
  if (isGood && std::cout << text << std::endl) return;
  std::cerr << text << std::endl;
}

int printOn(Connection& connection, const Options& options, const Sale& sale, const Totals& totals) {
  std::ostream silence(nullptr);
  std::ostream& progress = options.isJson ? silence : std::cout;
  const SalePlace place{connection.portWords(), connection.virtualPrinter() != nullptr};
  Interruption::setLastWords(lastWords(connection));
  connection.line().startAnywhere();
  ObjectSalePrinter printer(connection.printer(), connection.line(), sale.isCreditNote);
  const SaleEnd end =
      printSale(stepsOf(sale, totals), totals.net, printer, progress, Interruption::isRequested);
  if (place.isVirtual) progress << '\n' << connection.virtualPrinter()->paper() << '\n';
  const int status = exitStatus(end.verdict);
  if (options.isJson)
    tell(jsonLine(verdictJson(end, totals, place)), true);
  else
    tell(verdictText(end, totals, place), status == exitDone);
  return status;
}

int run(const Options& options) {
  auto [sale, problems] = readSale(readInput(options.file));
  if (!problems.empty()) return refuse(options.file, problems);
  const Totals totals = reckon(sale, problems);
  if (!problems.empty()) return refuse(options.file, problems);
  if (!options.isJson) showTotals(sale, totals);
  if (options.isCheckOnly) return exitDone;
  Connection connection(options.port, printerWords(options.faults));
  return printOn(connection, options, sale, totals);
}

}  // namespace

void addSaleCommand(CLI::App& app, int& status) {
  const auto text = [](std::string_view spanish, std::string_view english) {
    return std::string(say(spanish, english));
  };
  CLI::App* command = app.add_subcommand("sale", text("Imprime una factura o nota de crédito de un archivo",
                                                      "Print an invoice or a credit note from a file"));
  const auto options = std::make_shared<Options>();
  command
      ->add_option(text("ARCHIVO", "FILE"), options->file,
                   text("El documento como JSON; - para la entrada estándar",
                        "The document as JSON; - for standard input"))
      ->required();
  command->add_flag(
      "--check", options->isCheckOnly,
      text("Solo revisa el archivo y muestra sus totales", "Only check the file and show its totals"));
  command->add_flag("--json", options->isJson,
                    text("Muestra solo el veredicto, como JSON", "Show the verdict alone, as JSON"));
  addPortOptions(*command, options->port);
  command
      ->add_option("--fault", options->faults,
                   text("Lo que falla en la impresora virtual: \"lose-answer on close\"",
                        "What goes wrong on the virtual printer: \"lose-answer on close\""))
      ->type_name("PLAN")
      ->allow_extra_args(false)
      ->excludes("--port")
      ->excludes("--device");
  command->footer(text(
      "Estado de salida: 0 impreso, 2 no se intentó nada (el archivo o el puerto no están en orden),\n"
      "3 no impreso, 4 no se sabe, 5 ya había un documento abierto.",
      "Exit status: 0 printed, 2 nothing was tried (the file or the port is not in order), 3 not printed,\n"
      "4 unknown, 5 a document was open before."));
  command->callback([options, &status] { status = guarded([&] { return run(*options); }); });
}

}  // namespace zentaro::tools
