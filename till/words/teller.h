// What happens while a document is printed, as lines for people.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "till/course/observer.h"

namespace zentaro::till {

using Say = std::function<void(std::string_view text)>;

/// Hands on each line without its end, as soon as its pieces are all there.
Say byLine(Say take);

class Teller : public Observer {
 public:
  using Say = till::Say;

  /// `progress` is given the lines of the sale piece by piece: the label of a step comes before its wait. `notice` is
  /// given whole lines about everything else, each with its end.
  Teller(Say progress, Say notice) : progress_(std::move(progress)), notice_(std::move(notice)) {}

  void waiting(Time limit) override;
  void stillWaiting(Time waited, Time limit) override;
  void traceEnded(const std::string& why) override;
  void asksForCounters() override;
  void counters(const std::optional<Standing>& now, const std::string& trouble) override;
  void begins(const StepPlace& step) override;
  void ended(const Reply& reply) override;
  void sumsDiffer(const Problem& warning) override;
  void endsDocumentOf(const Job& job) override;
  void judged(const Job& job) override;
  void goesOnWithoutBooks(const std::string& why) override;
  void booksFell(const std::string& why) override;
  void waitsForBooks() override;
  void waitsForMachine() override;

 private:
  Say progress_, notice_;
};

}  // namespace zentaro::till
