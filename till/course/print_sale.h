// Carries a sale out: asks the machine what to do, has the printer do it, and says so line by line.
#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "till/course/sale_printer.h"

namespace zentaro::tools {

struct SaleEnd {
  Verdict verdict = Verdict::Unknown;
  std::string reason = {};         // why the sale did not go straight to its end; empty when it did
  bool wasOpened = false;          // something of the document may be on the paper
  std::optional<int> number = {};  // of a document that was printed, when the printer says it
  std::optional<Receipt> receipt = {};
};

/// Is told how far a sale is, before the printer is sent what comes next.
class SaleWitness {
 public:
  virtual ~SaleWitness() = default;
  /// No document is open, and the next command opens it. A text is a reason not to.
  virtual std::string opening(const Counters& before) = 0;
  /// The document is open; its number when the printer gave it.
  virtual void opened(const std::optional<int>& number) = 0;
  /// What comes next: "close", "cancel", "finish".
  virtual void turned(std::string_view turn) = 0;
};

/// `isInterrupted` is asked between two steps; when it says so no further step is sent, and the document is
/// cancelled or, when it is partially closed, finished.
SaleEnd printSale(const std::vector<SaleStep>& steps, Cents net, SalePrinter& printer, std::ostream& progress,
                  const std::function<bool()>& isInterrupted, SaleWitness* witness = nullptr);

/// Cancels, or finishes, the document that a sale left open which was cut short after `before`, and judges it.
SaleEnd endSale(const Counters& before, Cents net, SalePrinter& printer, std::ostream& progress,
                SaleWitness* witness);

}  // namespace zentaro::tools
