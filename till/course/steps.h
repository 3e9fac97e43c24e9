// The commands of a document in the order in which they are sent.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "till/document/sale.h"
#include "till/document/totals.h"
#include "zentaro.h"

namespace zentaro::till {

struct SaleStep {
  enum class Kind { Open, Middle, Close };
  Kind kind;
  std::string label;                            // for the line of progress
  std::function<std::int16_t(CZentaro&)> send;  // gives the outcome
  /// Looks at the answer of a step that succeeded; what it gives is a reason to go no further.
  std::function<std::string(const CZentaro&)> objection = [](const CZentaro&) { return std::string(); };
};

/// Opening, lines, discounts, subtotal, payments and close; with extra lines a partial close, the lines and
/// the definitive close. The subtotal is compared with `totals`.
std::vector<SaleStep> stepsOf(const Sale& sale, const Totals& totals);

}  // namespace zentaro::till
