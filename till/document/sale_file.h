// Reads a sale from JSON. docs/a-sale.md describes the members.
#pragma once

#include <string_view>

#include "till/document/group_reader.h"
#include "till/document/sale.h"

namespace zentaro::till {

struct SaleReading {
  Sale sale;
  Problems problems;  // when there are any, the sale is not to be used
};

/// Checks every member by itself; whether the amounts fit together is asked of reckon().
SaleReading readSale(std::string_view json);
SaleReading readSale(const Node& root);

}  // namespace zentaro::till
