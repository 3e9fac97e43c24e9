// One sale whose content is in order, from what the books say about it to its verdict.
#pragma once

#include <memory>
#include <optional>

#include "till/books/admission.h"
#include "till/course/station.h"
#include "till/course/verdict.h"

namespace zentaro::till {

/// A machine has one sale at a time. Every way in which it can end is a verdict; only errors of the program raise.
class SaleCourse {
 public:
  /// The sale must outlive this.
  SaleCourse(const Sale& sale, const Totals& totals, const SellOptions& options);

  /// What can be said without the printer, of a device that is to be opened then; nothing when the sale may go on.
  std::optional<Verdict> beforePort(const std::string& device);
  /// On an open port, which is closed and opened again where that is needed.
  Verdict print(CZentaro& printer, PrinterLine& line);
  /// Somebody has been told the verdict.
  void told();

 private:
  bool openBooks();
  std::optional<Verdict> refused(Stage stage);
  Verdict verdict(Ending ending, Cause cause = {}) const;
  void markTold();
  Order order() const;

  const Sale& sale_;
  Totals totals_;
  SellOptions options_;
  Wish wish_;
  Cause booksCause_;
  std::unique_ptr<Station> station_;
  std::optional<Keeper> keeper_;
};

}  // namespace zentaro::till
