// A sale that the printer is sent by itself, for whoever has no program yet. It does what a careful host does: the
// next command after the answer to the one before, and where an answer does not come it asks before it says what
// became of the sale.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "virtual-printer/wire/frame.h"

namespace virtual_printer {

class SampleSale {
 public:
  enum class End {
    Printed,
    Unanswered,  // printed, but an answer was lost: found out by asking
    NotPrinted,  // cancelled, or never closed
    Refused,     // by the printer, which says why
    Unknown,     // the printer answers no more
  };

  /// Begins with the cancellation of a document that an earlier one could not end.
  void cancelFirst();

  /// The next frame for the printer, when it is time for one.
  std::optional<std::string> next(std::chrono::milliseconds now);
  /// What the printer has answered.
  void take(std::string_view bytes, std::chrono::milliseconds now);

  /// Set once it is over.
  std::optional<End> end() const { return end_; }
  /// Of the invoice that was printed, or the reason of the refusal.
  const std::string& detail() const { return detail_; }

 private:
  void answered(const Command& answer);
  void statusIs(const Command& answer);
  void missed();
  void finish(End end, std::string detail = {});

  std::size_t step_ = 0;
  bool isSent_ = false;
  bool isClearing_ = false;  // cancels an earlier document
  bool wasLost_ = false;     // an answer, and the status is asked for
  int tries_ = 0;            // of that question
  char sequence_ = ' ';
  std::chrono::milliseconds deadline_{0};
  std::string received_;
  std::string invoicesBefore_, refusal_, detail_;
  std::optional<End> end_;
};

}  // namespace virtual_printer
