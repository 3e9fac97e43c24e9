// One sale whose content is in order: what the journal says about it, and its printing on an open printer.
#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "base/files/json_fwd.h"
#include "till/books/recorder.h"
#include "till/document/sale.h"
#include "tools/sale/bookkeeper.h"
#include "tools/sale/verdict.h"

namespace zentaro::tools {

struct SaleOrder {
  Sale sale;
  Totals totals;
  std::string key;     // under it nothing is printed twice; empty: none
  bool again = false;  // the same content for a new customer
  std::string device;  // what the journal calls a printer that gives no serial number
};

/// A printer object on its open port.
struct SalePrinterPort {
  CZentaro& printer;
  PrinterLine& line;
  SalePlace place;
};

class SaleJob {
 public:
  explicit SaleJob(SaleOrder order);

  /// Without a journal the sale is printed, with a warning on standard error; with a key it raises
  /// std::runtime_error.
  void openJournal();
  /// What the paper shows of the sale that is unknown; raises std::runtime_error when there is none.
  JournalVerdict resolve(Fact fact);

  /// Gets line and printer in step; the end of the sale when they do not.
  static std::optional<SaleEnd> getInStep(const SalePrinterPort& port);

  /// Why the sale is not printed; nothing when it may be. First what can be said without the printer; then,
  /// with line and printer in step, the open questions about the machine are answered.
  std::optional<JournalVerdict> refusal() const;
  std::optional<JournalVerdict> refusal(const SalePrinterPort& port);

  SaleEnd print(const SalePrinterPort& port, std::ostream& progress,
                const std::function<bool()>& isInterrupted);
  /// Of the sale that was printed.
  int exitStatus(const SaleEnd& end) const;
  /// The verdict has been told.
  void told();

  const Totals& totals() const { return order_.totals; }

 private:
  std::string machineOf(const SalePrinterPort& port) const;
  Entry newEntry();

  SaleOrder order_;
  Wish wish_;
  Entry entry_;
  std::unique_ptr<Journal> journal_;
  std::optional<Bookkeeper> bookkeeper_;
  std::optional<Recorder> recorder_;
};

/// The journal's verdict in the form of verdictJson().
Json verdictJson(const JournalVerdict& verdict);

}  // namespace zentaro::tools
