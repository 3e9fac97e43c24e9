// Carries a sale out: asks the machine what to do, has the printer do it, and says so line by line.
#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "sale/sale_printer.h"

namespace zentaro::tools {

struct SaleEnd {
  Verdict verdict = Verdict::Unknown;
  std::string reason = {};         // why the sale did not go straight to its end; empty when it did
  bool wasOpened = false;          // something of the document may be on the paper
  std::optional<int> number = {};  // of a document that was printed, when the printer says it
  std::optional<Receipt> receipt = {};
};

/// `isInterrupted` is asked between two steps; when it says so no further step is sent, and the document is
/// cancelled or, when it is partially closed, finished.
SaleEnd printSale(const std::vector<Step>& steps, Cents net, SalePrinter& printer, std::ostream& progress,
                  const std::function<bool()>& isInterrupted);

}  // namespace zentaro::tools
