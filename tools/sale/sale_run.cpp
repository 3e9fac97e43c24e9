// Reads the file, checks all of it, asks the journal, opens the port and prints.
#include "sale/sale_run.h"

#include <unistd.h>

#include <chrono>
#include <iostream>
#include <memory>
#include <system_error>

#include "automation/conversions.h"
#include "common/guarded.h"
#include "common/read_input.h"
#include "journal/bookkeeper.h"
#include "journal/recorder.h"
#include "platform/setting_keys.h"
#include "sale/content.h"
#include "sale/paper_check.h"
#include "sale/sale_file.h"
#include "sale/verdict.h"
#include "terminal/harmless.h"
#include "terminal/language.h"

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

class SaleRun {
 public:
  SaleRun(const SaleOptions& options, Sale sale, const Totals& totals)
      : options_(options),
        sale_(std::move(sale)),
        totals_(totals),
        wish_{options.key, contentDigest(sale_), options.again} {}

  int run() {
    const bool isReal = options_.port.port.has_value() || !options_.port.device.empty();
    if (isReal) openJournal();
    if (!options_.resolve.empty()) return resolve();
    if (bookkeeper_) {
      if (const auto verdict = bookkeeper_->beforePort()) return tellJournal(*verdict);
    }
    Connection connection(options_.port, printerWords(options_.faults));
    connection.printer().verifyCheckSum = true;
    connection.line().startAnywhere();
    const SalePlace place{connection.portWords(), connection.virtualPrinter() != nullptr};
    try {
      connection.line().getInStep();
    } catch (const std::runtime_error& error) {
      const SaleEnd end{Verdict::Unreachable, error.what()};
      tellEnd(end, place);
      return exitStatus(end.verdict);
    }
    if (bookkeeper_) {
      if (const auto verdict = askJournal(connection)) return tellJournal(*verdict);
    }
    return print(connection, place);
  }

 private:
  void openJournal() {
    try {
      journal_ = std::make_unique<Journal>(stateFolder());
      bookkeeper_.emplace(*journal_, wish_);
    } catch (const std::system_error& error) {
      const std::string text = say("no se puede escribir el diario: {}", "the journal cannot be written: {}",
                                   {harmless(error.what())});
      if (!options_.key.empty() || !options_.resolve.empty()) throw std::runtime_error(text);
      std::cerr << say("zentaro: aviso: ", "zentaro: warning: ") << text << '\n';
    }
  }

  int resolve() {
    if (!bookkeeper_) openJournal();
    const Fact fact = options_.resolve == "printed" ? Fact::Printed : Fact::NotPrinted;
    if (const auto verdict = bookkeeper_->resolve(fact)) return tellJournal(*verdict);
    throw std::runtime_error(std::string(say("el diario no tiene ninguna duda sobre esta venta",
                                             "the journal has no open question about this sale")));
  }

  /// Answers the open questions about the machine in front, then asks whether this sale may be printed.
  std::optional<JournalVerdict> askJournal(Connection& connection) {
    const std::optional<int> lastZ = lastZOf(connection.printer());
    entry_.lastZ = lastZ;
    entry_.machine = machineOf(connection);
    bookkeeper_->judge(entry_.machine, lastZ, connection.printer(), connection.line());
    return bookkeeper_->beforePrinting();
  }

  static std::optional<int> lastZOf(const CZentaro& printer) {
    try {
      statusN status;
      status.LoadFromResponse(printer.getResponse(0));
      return status.UltimoCierreZ();
    } catch (const AutomationError&) {  // a printer that does not give it
      return std::nullopt;
    }
  }

  std::string machineOf(Connection& connection) const {
    CZentaro& printer = connection.printer();
    const std::string serial = utf8(printer.SerialImpresora());
    if (printer.nEnvironmentError != ENVERR_OK) connection.line().lostAnswer();
    return serial.empty() || !answersLastCommand(printer) ? device() : serial;
  }

  std::string device() const {
    return options_.port.port ? "COM" + std::to_string(*options_.port.port) : options_.port.device;
  }

  int print(Connection& connection, const SalePlace& place) {
    std::ostream silence(nullptr);
    std::ostream& progress = options_.isJson ? silence : std::cout;
    Interruption::setLastWords(lastWords(place));
    ObjectSalePrinter printer(connection.printer(), connection.line(), sale_.isCreditNote);
    Recorder recorder(journal_.get(), newEntry(),
                      options_.key.empty() ? JournalNeed::Wanted : JournalNeed::Required);
    const SaleEnd end = printSale(stepsOf(sale_, totals_), totals_.net, printer, progress,
                                  Interruption::isRequested, &recorder);
    recorder.ended(end);
    if (place.isVirtual) progress << '\n' << connection.virtualPrinter()->paper() << '\n';
    tellEnd(end, place);
    recorder.told();
    return recorder.hasObjected() ? exitFailed : exitStatus(end.verdict);
  }

  Entry newEntry() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    entry_.at = std::chrono::duration_cast<std::chrono::seconds>(now).count();
    entry_.name = std::to_string(now.count()) + "-" + std::to_string(::getpid());
    entry_.process = processName(::getpid());
    entry_.key = wish_.key;
    entry_.digest = wish_.digest;
    entry_.device = device();
    entry_.isCreditNote = sale_.isCreditNote;
    entry_.net = totals_.net;
    entry_.total = totals_.due();
    return entry_;
  }

  // What a second signal says: by then nobody knows how far the sale is.
  static std::string lastWords(const SalePlace& place) {
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

  void tellEnd(const SaleEnd& end, const SalePlace& place) const {
    if (options_.isJson)
      tell(jsonLine(verdictJson(end, totals_, place)), true);
    else
      tell(verdictText(end, totals_, place), exitStatus(end.verdict) == exitDone);
  }

  int tellJournal(const JournalVerdict& verdict) const {
    if (options_.isJson) {
      const Json json{
          {"verdict", verdict.name}, {"number", verdict.number ? Json(*verdict.number) : Json(nullptr)},
          {"total", nullptr},        {"igtf", nullptr},
          {"change", nullptr},       {"cause", nullptr},
          {"next", verdict.text},    {"virtual", false}};
      tell(jsonLine(json), true);
    } else {
      tell(verdict.text, verdict.exitStatus == exitDone);
    }
    return verdict.exitStatus;
  }

  const SaleOptions& options_;
  Sale sale_;
  Totals totals_;
  Wish wish_;
  Entry entry_;
  std::unique_ptr<Journal> journal_;
  std::optional<Bookkeeper> bookkeeper_;
};

}  // namespace

int runSale(const SaleOptions& options) {
  auto [sale, problems] = readSale(readInput(options.file));
  if (!problems.empty()) return refuse(options.file, problems);
  const Totals totals = reckon(sale, problems);
  if (!problems.empty()) return refuse(options.file, problems);
  if (!options.isJson) showTotals(sale, totals);
  if (options.isCheckOnly) return warn(sale);
  return SaleRun(options, std::move(sale), totals).run();
}

int showJournal() {
  std::cout << listText(Journal(stateFolder()).entries());
  return exitDone;
}

}  // namespace zentaro::tools
