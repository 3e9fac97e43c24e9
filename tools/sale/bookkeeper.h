// What the journal has to say about a sale, before the port is opened and before the document is.
#pragma once

#include <optional>
#include <string>

#include "till/books/journal.h"
#include "till/books/judging.h"
#include "till/course/print_sale.h"
#include "till/line/printer_line.h"

namespace zentaro::tools {

/// Why nothing is printed.
struct JournalVerdict {
  int exitStatus = 0;
  std::string name;  // for programs
  std::string text;  // for people
  std::optional<int> number;
};

class Bookkeeper {
 public:
  Bookkeeper(Journal& journal, Wish wish) : journal_(journal), wish_(std::move(wish)) {}

  /// Nothing when the sale may go on.
  std::optional<JournalVerdict> beforePort() const;

  /// Judges, by the counters of the machine in front, the sales on it that were cut short, ends a document that
  /// one of them left open, and says on standard error what came of each. `lastZ` is the number of the last Z.
  void judge(const std::string& machine, const std::optional<int>& lastZ, CZentaro& printer,
             PrinterLine& line);

  /// Nothing when the sale may be printed.
  std::optional<JournalVerdict> beforePrinting() const;

  /// Notes what the paper shows of the sale that is unknown. Nothing when there is none.
  std::optional<JournalVerdict> resolve(Fact fact);

 private:
  void judgeOne(Entry entry, const std::optional<int>& lastZ, CZentaro& printer, PrinterLine& line);

  Journal& journal_;
  Wish wish_;
};

/// All entries as a table.
std::string listText(const std::vector<Entry>& entries);

}  // namespace zentaro::tools
