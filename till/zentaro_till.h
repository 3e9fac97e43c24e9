// What a till does with a printer, each as one call: a document printed once, with a verdict that holds; the closing
// of the day; what became of what was cut short.
//
// A call is told what is wanted by options and tells an observer what happens. It writes nothing anywhere but into the
// books, knows no signal, and raises nothing for what can go wrong at a counter: that is a verdict. The port of the
// printer object is open before and after; it may be closed and opened again meanwhile. Calls on two printers may run
// on two threads, each with its printer object.
#pragma once

#include <stdexcept>
#include <string_view>
#include <vector>

#include "printer/czentaro.h"
#include "till/books/books_error.h"
#include "till/course/closing_verdict.h"
#include "till/course/options.h"
#include "till/course/verdict.h"
#include "till/document/paper_check.h"
#include "till/document/sale_file.h"
#include "till/document/totals.h"

namespace zentaro::till {

/// What the program has asked for cannot be: a document that is not in order, an id with other characters than
/// letters, digits and ._~:-, a port that is closed. Nothing was sent.
class ZENTARO_API WrongUse : public std::invalid_argument {
 public:
  explicit WrongUse(const std::string& what, Problems problems = {})
      : std::invalid_argument(what), problems_(std::move(problems)) {}
  /// Of the document, each under the path of its member.
  const Problems& problems() const { return problems_; }

 private:
  Problems problems_;
};

/// A document in order, with its totals.
struct Document {
  Sale sale;
  Totals totals;
};

/// Takes a document by its members, or as the JSON of a sale file; raises WrongUse.
ZENTARO_API Document documentOf(Sale sale);
ZENTARO_API Document documentOf(std::string_view json);
/// The same of what was parsed already, here and below.
Document documentOf(const Node& root);

struct Checked {
  Problems problems;  // what keeps it from being printed
  Totals totals;      // when there are none
  Problems warnings;  // what paper will not show, and what the printer is likely to refuse
};
ZENTARO_API Checked check(std::string_view json);
Checked check(const Node& root);

/// Prints the document once. With an id nothing is ever printed twice under it: the books know what became of it.
ZENTARO_API Verdict sell(CZentaro& printer, const Document& document, const SellOptions& options = {});

/// Kind::Z closes the day, Kind::X reads it; both print.
ZENTARO_API ClosingVerdict close(CZentaro& printer, Kind kind, const CloseOptions& options = {});

struct Settled {
  std::optional<Ending> refusal = {};  // Unreachable or Busy: nothing was asked
  Cause cause = {};
  std::string machine = {};      // the printer's serial number, or its device
  std::vector<Job> judged = {};  // what became of jobs that were cut short, as far as it became known now
  std::vector<Job> open = {};    // those that a person has to look at
};
/// Judges what is open on the printer by its counters, and ends what its own jobs left open.
ZENTARO_API Settled settle(CZentaro& printer, const Options& options = {});

/// The latest jobs of the books, the oldest of them first. Raises BooksError.
ZENTARO_API std::vector<Job> jobs(int most = 100);
/// The job of that id.
ZENTARO_API std::optional<Job> find(std::string_view id);

}  // namespace zentaro::till
