// What happens while a document is printed, for whoever words it. Nothing is decided here.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "till/books/evidence.h"
#include "till/course/reply.h"
#include "till/document/group_reader.h"
#include "till/line/line_observer.h"
#include "zentaro_api.h"

namespace zentaro::till {

/// A command that is about to be sent: "item Arepa, 2 x 10.00", the third of twelve. What only ends a document that
/// went wrong is none of them: 0 of 0.
struct StepPlace {
  std::size_t number = 0, count = 0;
  std::string label;
};

class ZENTARO_API Observer : public LineObserver {
 public:
  virtual void asksForCounters() {}
  /// Nothing, and why, when they could not be had.
  virtual void counters([[maybe_unused]] const std::optional<Standing>& now,
                        [[maybe_unused]] const std::string& trouble) {}
  virtual void begins([[maybe_unused]] const StepPlace& step) {}
  virtual void ended([[maybe_unused]] const Reply& reply) {}

  /// The file's prices with tax add up to another total, by a few cents, than the one that is printed.
  virtual void sumsDiffer([[maybe_unused]] const Problem& warning) {}

  /// The document of a job that was cut short is still open, and is ended now.
  virtual void endsDocumentOf([[maybe_unused]] const Job& job) {}
  /// What became of a job that was cut short is known now, or is known to stay unknown.
  virtual void judged([[maybe_unused]] const Job& job) {}

  /// The document is printed although the books cannot keep it, which has this reason.
  virtual void goesOnWithoutBooks([[maybe_unused]] const std::string& why) {}
  /// What is under way goes to its end although the books cannot follow.
  virtual void booksFell([[maybe_unused]] const std::string& why) {}
  /// Another program holds the books, or prints on this machine.
  virtual void waitsForBooks() {}
  virtual void waitsForMachine() {}
};

}  // namespace zentaro::till
