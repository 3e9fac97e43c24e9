// Carries a sale out: asks the machine what to do, has the printer do it, and says so line by line.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "sale/sale_printer.h"

namespace zentaro::tools {

struct SaleEnd {
  Verdict verdict = Verdict::Unknown;
  std::string reason;  // why the sale did not go straight to its end; empty when it did
};

SaleEnd printSale(const std::vector<Step>& steps, Cents net, SalePrinter& printer, std::ostream& progress);

/// The exit status, and what the cashier should know and do.
int exitStatus(Verdict verdict);
std::string advice(const SaleEnd& end);

}  // namespace zentaro::tools
