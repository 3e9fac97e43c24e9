// What a sale needs of a printer, and the printer object as such a printer.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "till/books/evidence.h"
#include "till/course/reply.h"
#include "till/course/steps.h"
#include "till/course/verdict.h"
#include "till/line/printer_line.h"

namespace zentaro::till {

class SalePrinter {
 public:
  virtual ~SalePrinter() = default;
  virtual Reply send(const SaleStep& step) = 0;
  virtual Reply cancel() = 0;
  /// The definitive close of a partially closed document.
  virtual Reply finish() = 0;
  /// Asks until it is in step with the printer: a status request changes nothing.
  virtual std::optional<Standing> counters() = 0;
  /// Why counters() gave nothing.
  virtual std::string trouble() const = 0;
  /// The number of the last document, or of the last Z; nothing when it cannot be had at once.
  virtual std::optional<std::int64_t> lastNumber() = 0;
  /// What the answer to the opening gives as the document's number; nothing when it holds none.
  virtual std::optional<std::int64_t> openedNumber() const = 0;
  /// The figures of the last close; nothing when its answer was lost or holds other fields.
  virtual std::optional<Receipt> receipt() const = 0;
};

/// The printer object must be open; it and the line must outlive this. Checksums are verified from now on. Amounts
/// and numbers are those of the kind of document.
class ObjectSalePrinter : public SalePrinter {
 public:
  ObjectSalePrinter(CZentaro& printer, PrinterLine& line, Kind kind);
  /// The number of the last Z was heard just now, or that the printer gives none: it is not asked for again unless
  /// something is lost.
  void heardLastZ(const std::optional<std::int64_t>& number);

  Reply send(const SaleStep& step) override;
  Reply cancel() override;
  Reply finish() override;
  std::optional<Standing> counters() override;
  std::string trouble() const override { return trouble_; }
  std::optional<std::int64_t> lastNumber() override;
  std::optional<std::int64_t> openedNumber() const override;
  std::optional<Receipt> receipt() const override { return receipt_; }

 private:
  using Operation = std::function<std::int16_t(CZentaro&)>;

  Reply run(const Operation& operation);
  Reply replyOf(std::int16_t outcome);
  Reply lost(std::string text);
  std::string refusal(std::int16_t outcome) const;
  Heard askCounters(std::optional<Standing>& standing);
  Heard askLastZ();
  Heard askStatus(std::optional<Standing>& standing);
  Heard askDayAmount(std::optional<std::int64_t>& amount);
  void takeReceipt();

  CZentaro& printer_;
  PrinterLine& line_;
  Kind kind_;
  std::optional<std::int64_t> lastZ_;
  bool knowsLastZ_ = false;
  std::string trouble_;
  std::optional<Receipt> receipt_;
};

/// The number of the last Z in the status that the object asked for last; nothing when it is not in there.
std::optional<std::int64_t> lastZOf(const CZentaro& printer);

}  // namespace zentaro::till
