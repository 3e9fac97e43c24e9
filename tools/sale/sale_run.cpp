// Reads the file, checks all of it, and takes it through its course.
#include "tools/sale/sale_run.h"

#include <iostream>

#include "base/files/json.h"
#include "base/files/read_input.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "till/course/sale_course.h"
#include "till/words/call_words.h"
#include "till/words/verdict_words.h"
#include "till/zentaro_till.h"
#include "tools/connection/known_settings.h"
#include "tools/sale/exit_status.h"
#include "tools/sale/journal.h"
#include "tools/show/guarded.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

int refuse(const std::string& file, const till::Problems& problems) {
  for (const till::Problem& problem : problems)
    std::cerr << harmless(file + ": " + problem.path + (problem.path.empty() ? "" : ": ") + problem.text)
              << '\n';
  std::cerr << say("No se envió nada a la impresora.\n", "Nothing was sent to the printer.\n");
  return exitFailed;
}

void showTotals(const till::Sale& sale, const till::Totals& totals) {
  std::cout << (sale.isCreditNote ? say("nota de crédito", "credit note") : say("factura", "invoice"))
            << say(": neto {}, impuesto {}, total {}, IGTF {}, pagado {}, vuelto {}\n",
                   ": net {}, tax {}, total {}, IGTF {}, paid {}, change {}\n",
                   {till::centsText(totals.net), till::centsText(totals.tax), till::centsText(totals.total()),
                    till::centsText(totals.igtf), till::centsText(totals.paid),
                    till::centsText(totals.change())});
}

void warn(const till::Problems& warnings) {
  for (const till::Problem& warning : warnings)
    std::cout << say("aviso: ", "warning: ") << harmless(warning.path + ": " + warning.text) << '\n';
}

std::vector<std::string> printerWords(const std::vector<std::string>& faults) {
  std::vector<std::string> words;
  for (const std::string& fault : faults) words.insert(words.end(), {"--fault", fault});
  return words;
}

// A standard output that is closed or full must not keep the verdict from anybody.
void tell(const std::string& text, bool isGood) {
  if (isGood && std::cout << text << std::endl) return;
  std::cerr << text << std::endl;
}

// What a second signal says: by then nobody knows how far the sale is.
std::string lastWords(const till::SalePlace& place) {
  if (place.isVirtual)
    return say("\nzentaro: interrumpido; la impresora virtual ya no está\n",
               "\nzentaro: ended; the virtual printer is gone\n");
  return say(
      "\nzentaro: interrumpido en medio de una venta: puede haber un documento abierto, o impreso. Mire el "
      "papel; si termina por la mitad: zentaro call {} CancelarComprobante\n",
      "\nzentaro: ended in the middle of a sale: a document may be open, or printed. Look at the paper; if "
      "it ends in the middle: zentaro call {} CancelarComprobante\n",
      {place.portWords});
}

int tellVerdict(const till::Verdict& verdict, const till::SalePlace& place, bool isJson) {
  const int status = exitStatus(verdict);
  if (isJson)
    tell(terminal::whole(jsonLine(till::verdictJson(verdict, place))), true);
  else
    tell(terminal::withCommands(till::verdictText(verdict, place)), status == exitDone);
  return status;
}

till::SellOptions sellOptions(const SaleOptions& options, till::Observer& observer) {
  till::SellOptions made;
  made.stop = {base::Interruption::isRequested, say("interrumpido por una señal", "interrupted by a signal")};
  made.observer = &observer;
  made.wait = std::chrono::seconds(options.port.wait.value_or(0));
  made.keepsBooks = !deviceNamedBy(options.port).empty();
  made.owner = "sale";
  made.printerName = options.port.port ? portKey(*options.port.port) : options.port.device;
  made.id = options.key;
  made.again = options.again;
  return made;
}

int print(const SaleOptions& options, const till::Sale& sale, const till::Totals& totals) {
  demandReadableSettings();
  const base::Interruption interruption;  // before the books are opened
  ConsoleTeller teller(options.isJson ? Progress::Hidden : Progress::Shown);
  till::SaleCourse course(sale, totals, sellOptions(options, teller));
  if (const auto verdict = course.beforePort(deviceNamedBy(options.port)))
    return tellVerdict(*verdict, {portWordsOf(options.port)}, options.isJson);
  const Unasked unasked = options.key.empty() ? Unasked::Virtual : Unasked::Nothing;
  Connection connection(options.port, printerWords(options.faults), unasked, &teller);
  const till::SalePlace place{connection.portWords(), connection.virtualPrinter() != nullptr};
  base::Interruption::setLastWords(lastWords(place));
  const till::Verdict verdict = course.print(connection.printer(), connection.line());
  if (place.isVirtual && !options.isJson) std::cout << '\n' << connection.virtualPrinter()->paper() << '\n';
  const int status = tellVerdict(verdict, place, options.isJson);
  course.told();
  return status;
}

}  // namespace

int runSale(const SaleOptions& options) {
  const std::string text = base::readInput(options.file);
  const till::Checked checked = till::check(text);
  if (options.isCheckOnly && options.isJson) {
    std::cout << terminal::whole(jsonPage(till::checkedJson(checked))) << std::flush;
    return checked.problems.empty() ? exitDone : exitFailed;
  }
  if (!checked.problems.empty()) return refuse(options.file, checked.problems);
  const auto [sale, totals] = till::documentOf(text);
  if (options.isCheckOnly) showTotals(sale, totals);
  if (!options.isJson && options.resolve.empty()) warn(checked.warnings);
  if (options.isCheckOnly) return exitDone;
  if (!options.resolve.empty())
    return resolve(sale, options.key, options.resolve == "printed", options.isJson);
  return print(options, sale, totals);
}

}  // namespace zentaro::tools
