// Keeps the entry of a sale in step with the sale.
#pragma once

#include "till/books/journal.h"
#include "till/course/print_sale.h"

namespace zentaro::tools {

/// What a sale may do when the journal cannot be written.
enum class JournalNeed { Required, Wanted };

class Recorder : public SaleWitness {
 public:
  /// `journal` may be null: then nothing is kept. It must outlive this.
  Recorder(Journal* journal, Entry entry, JournalNeed need)
      : journal_(journal), entry_(std::move(entry)), need_(need) {}

  std::string opening(const Counters& before) override;
  void opened(const std::optional<int>& number) override;
  void turned(std::string_view turn) override;

  /// The end of the sale, before and after somebody is told.
  void ended(const SaleEnd& end);
  void told();

  /// Whether the journal kept the sale from being printed.
  bool hasObjected() const { return hasObjected_; }
  const Entry& entry() const { return entry_; }

 private:
  std::string object(std::string reason);
  void keep();

  Journal* journal_;
  Entry entry_;
  JournalNeed need_;
  bool hasBegun_ = false, hasObjected_ = false;
};

/// What the verdict of a sale says about its document. One that is still open is an open question.
Fact factOf(Verdict verdict);

}  // namespace zentaro::tools
