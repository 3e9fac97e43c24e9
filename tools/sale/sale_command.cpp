// The options of `zentaro sale`.
#include "tools/sale/sale_command.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "base/terminal/command_line.h"
#include "base/terminal/language.h"
#include "till/books/job.h"
#include "tools/sale/journal.h"
#include "tools/sale/sale_run.h"
#include "tools/show/guarded.h"

namespace zentaro::tools {

using terminal::say;

namespace {

CLI::Validator jobId() {
  return {[](const std::string& text) {
            return till::isJobId(text) ? std::string()
                                       : say("de 1 a 128 caracteres de A-Z a-z 0-9 . _ ~ : -",
                                             "1 to 128 characters of A-Z a-z 0-9 . _ ~ : -");
          },
          ""};
}

}  // namespace

void addSaleCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("sale", say("Imprime una factura o nota de crédito de un archivo",
                                                     "Print an invoice or a credit note from a file"));
  const auto options = std::make_shared<SaleOptions>();
  const auto wantsJournal = std::make_shared<bool>(false);
  CLI::Option* listing = command->add_flag(
      "--journal", *wantsJournal, say("Muestra el diario de las ventas", "Show the journal of sales"));
  CLI::Option* file = command
                          ->add_option(say("ARCHIVO", "FILE"), options->file,
                                       say("El documento como JSON; - para la entrada estándar",
                                           "The document as JSON; - for standard input"))
                          ->excludes(listing);
  command->add_flag(
      "--check", options->isCheckOnly,
      say("Solo revisa el archivo y muestra sus totales", "Only check the file and show its totals"));
  command->add_flag("--json", options->isJson,
                    say("Muestra solo el veredicto, como JSON", "Show the verdict alone, as JSON"));
  addPortOptions(*command, options->port);
  command
      ->add_option("--id", options->key,
                   say("Clave de la venta, p. ej. su número de pedido: con ella nada se imprime dos veces",
                       "The sale's key, such as its order number: under it nothing is printed twice"))
      ->check(jobId())
      ->type_name(say("CLAVE", "KEY"));
  command->add_flag("--again", options->again,
                    say("El mismo contenido para otro cliente", "The same content for a new customer"));
  command
      ->add_option("--resolve", options->resolve,
                   say("Lo que muestra el papel de una venta de la que no se sabe",
                       "What the paper shows of a sale that is unknown"))
      ->check(terminal::oneOf({"printed", "not-printed"}))
      ->type_name("printed|not-printed");
  command
      ->add_option("--fault", options->faults,
                   say("Lo que falla en la impresora virtual: \"lose-answer on close\"",
                       "What goes wrong on the virtual printer: \"lose-answer on close\""))
      ->type_name("PLAN")
      ->allow_extra_args(false)
      ->excludes("--port")
      ->excludes("--device");
  command->footer(say(
      "Con --id nada se imprime dos veces, siempre que todas las ventas de la máquina vayan por los mismos libros; "
      "sin id no se puede prometer nada.\n"
      "Estado de salida: 0 impreso, 2 no se intentó nada (el archivo o el puerto no están en orden), "
      "3 no impreso, 4 no se sabe, 5 ya había un documento abierto, 6 se imprimió antes sin que nadie lo supiera.",
      "With --id nothing is printed twice, as long as every sale of the machine goes through one set of books; "
      "without an id nothing can be promised.\n"
      "Exit status: 0 printed, 2 nothing was tried (the file or the port is not in order), 3 not printed, "
      "4 unknown, 5 a document was open before, 6 printed before, and nobody was told."));
  command->callback([=, &status] {
    if (!*wantsJournal && file->empty()) throw CLI::RequiredError(file->get_name());
    status = guarded([&] { return *wantsJournal ? showJournal(options->isJson) : runSale(*options); });
  });
}

}  // namespace zentaro::tools
