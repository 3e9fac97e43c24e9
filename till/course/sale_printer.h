// What a sale needs of a printer, and the printer object as such a printer.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "till/course/sale_machine.h"
#include "till/course/steps.h"
#include "till/line/printer_line.h"

namespace zentaro::tools {

struct Reply {
  Fate fate = Fate::Done;
  std::string text =
      {};  // why, unless it is done: the printer's own error text, or what came instead of an answer
};

/// What the printer said when it closed a document.
struct Receipt {
  int number = 0;
  Cents total = 0;  // with the IGTF
  Cents change = 0;
};

class SalePrinter {
 public:
  virtual ~SalePrinter() = default;
  virtual Reply send(const SaleStep& step) = 0;
  virtual Reply cancel() = 0;
  /// The definitive close of a partially closed document.
  virtual Reply finish() = 0;
  /// Asks until it is in step with the printer: a status request changes nothing.
  virtual std::optional<Counters> counters() = 0;
  /// Why counters() gave nothing.
  virtual std::string trouble() const = 0;
  /// The number of the last document, asked for behind a sale; nothing when it cannot be had at once.
  virtual std::optional<int> lastNumber() = 0;
  /// What the answer to the opening gives as the document's number; nothing when it holds none.
  virtual std::optional<int> openedNumber() const = 0;
  /// The figures of the last close; nothing when its answer was lost or holds other fields.
  virtual std::optional<Receipt> receipt() const = 0;
};

/// The printer object must be open; it and the line must outlive this. Checksums are verified from now on.
class ObjectSalePrinter : public SalePrinter {
 public:
  ObjectSalePrinter(CZentaro& printer, PrinterLine& line, bool isCreditNote);
  Reply send(const SaleStep& step) override;
  Reply cancel() override;
  Reply finish() override;
  std::optional<Counters> counters() override;
  std::string trouble() const override { return trouble_; }
  std::optional<int> lastNumber() override;
  std::optional<int> openedNumber() const override;
  std::optional<Receipt> receipt() const override { return receipt_; }

 private:
  using Operation = std::function<std::int16_t(CZentaro&)>;

  Reply run(const Operation& operation);
  Reply replyOf(std::int16_t outcome);
  std::string refusal(std::int16_t outcome) const;
  Heard askCounters(std::optional<Counters>& counters);
  Heard askStatus(std::optional<Counters>& counters);
  Heard askDayNet(std::optional<Cents>& net);
  void takeReceipt();

  CZentaro& printer_;
  PrinterLine& line_;
  bool isCreditNote_;
  std::string trouble_;
  std::optional<Receipt> receipt_;
};

}  // namespace zentaro::tools
