// Reads the file, checks all of it, asks the journal, opens the port and prints.
#include "tools/sale/sale_run.h"

#include <iostream>

#include "automation/conversions.h"
#include "base/files/json.h"
#include "base/files/read_input.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "platform/setting_keys.h"
#include "till/document/paper_check.h"
#include "till/document/sale_file.h"
#include "tools/sale/sale_job.h"
#include "tools/show/guarded.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

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

int warn(const Sale& sale) {
  constexpr int usualLength = 20;
  int length = usualLength;
  try {
    length = toInt16(readSetting(settingDescriptionLength));
  } catch (const AutomationError&) {  // the library then goes by its default, too
  }
  for (const Problem& warning : paperWarnings(sale, length > 0 ? length : usualLength))
    std::cout << say("aviso: ", "warning: ") << harmless(warning.path + ": " + warning.text) << '\n';
  return exitDone;
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
std::string lastWords(const SalePlace& place) {
  if (place.isVirtual)
    return std::string(say("\nzentaro: interrumpido; la impresora virtual ya no está\n",
                           "\nzentaro: ended; the virtual printer is gone\n"));
  return say(
      "\nzentaro: interrumpido en medio de una venta: puede haber un documento abierto, o impreso. Mire el "
      "papel; si termina por la mitad: zentaro call {} CancelarComprobante\n",
      "\nzentaro: ended in the middle of a sale: a document may be open, or printed. Look at the paper; if "
      "it ends in the middle: zentaro call {} CancelarComprobante\n",
      {place.portWords});
}

int tellJournal(const JournalVerdict& verdict, bool isJson) {
  if (isJson)
    tell(jsonLine(verdictJson(verdict)), true);
  else
    tell(verdict.text, verdict.exitStatus == exitDone);
  return verdict.exitStatus;
}

void tellEnd(const SaleEnd& end, const SaleJob& job, const SalePlace& place, bool isJson) {
  if (isJson)
    tell(jsonLine(verdictJson(end, job.totals(), place)), true);
  else
    tell(verdictText(end, job.totals(), place), exitStatus(end.verdict) == exitDone);
}

int print(SaleJob& job, Connection& connection, const SalePrinterPort& port, bool isJson) {
  std::ostream silence(nullptr);
  std::ostream& progress = isJson ? silence : std::cout;
  Interruption::setLastWords(lastWords(port.place));
  const SaleEnd end = job.print(port, progress, Interruption::isRequested);
  if (port.place.isVirtual) progress << '\n' << connection.virtualPrinter()->paper() << '\n';
  tellEnd(end, job, port.place, isJson);
  job.told();
  return job.exitStatus(end);
}

std::string deviceOf(const PortOptions& port) {
  return port.port ? "COM" + std::to_string(*port.port) : port.device;
}

int run(const SaleOptions& options, SaleJob& job) {
  const bool isReal = !deviceOf(options.port).empty();
  if (isReal || !options.resolve.empty()) job.openJournal();
  if (!options.resolve.empty()) {
    const Fact fact = options.resolve == "printed" ? Fact::Printed : Fact::NotPrinted;
    return tellJournal(job.resolve(fact), options.isJson);
  }
  if (const auto verdict = job.refusal()) return tellJournal(*verdict, options.isJson);
  Connection connection(options.port, printerWords(options.faults));
  const SalePrinterPort port{connection.printer(),
                             connection.line(),
                             {connection.portWords(), connection.virtualPrinter() != nullptr}};
  if (const auto end = SaleJob::getInStep(port)) {
    tellEnd(*end, job, port.place, options.isJson);
    return exitStatus(end->verdict);
  }
  if (const auto verdict = job.refusal(port)) return tellJournal(*verdict, options.isJson);
  return print(job, connection, port, options.isJson);
}

}  // namespace

int runSale(const SaleOptions& options) {
  auto [sale, problems] = readSale(readInput(options.file));
  if (!problems.empty()) return refuse(options.file, problems);
  const Totals totals = reckon(sale, problems);
  if (!problems.empty()) return refuse(options.file, problems);
  if (!options.isJson) showTotals(sale, totals);
  if (options.isCheckOnly) return warn(sale);
  SaleJob job({std::move(sale), totals, options.key, options.again, deviceOf(options.port)});
  return run(options, job);
}

int showJournal() {
  std::cout << listText(Journal(stateFolder()).entries());
  return exitDone;
}

}  // namespace zentaro::tools
