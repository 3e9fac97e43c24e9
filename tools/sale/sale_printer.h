// What a sale needs of a printer, and the printer object as such a printer.
#pragma once

#include <optional>
#include <string>

#include "sale/sale_machine.h"
#include "sale/steps.h"

namespace zentaro::tools {

struct Reply {
  Fate fate = Fate::Done;
  std::string text;  // why, unless it is done: the printer's own error text, or the library's
};

class SalePrinter {
 public:
  virtual ~SalePrinter() = default;
  virtual Reply send(const Step& step) = 0;
  virtual Reply cancel() = 0;
  /// The definitive close of a partially closed document.
  virtual Reply finish() = 0;
  /// Asks again when an answer is lost: a status request changes nothing.
  virtual std::optional<Counters> counters() = 0;
  /// Why counters() gave nothing.
  virtual std::string trouble() const = 0;
};

/// The printer object must be open and outlive it. Its answers' checksums are verified from now on.
class ObjectSalePrinter : public SalePrinter {
 public:
  ObjectSalePrinter(CZentaro& printer, bool isCreditNote);
  Reply send(const Step& step) override;
  Reply cancel() override;
  Reply finish() override;
  std::optional<Counters> counters() override;
  std::string trouble() const override;

 private:
  std::optional<Counters> askOnce();
  std::optional<Cents> dayNet();
  void reopen();

  CZentaro& printer_;
  bool isCreditNote_;
};

}  // namespace zentaro::tools
