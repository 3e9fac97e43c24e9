// A fiscal printer in a few lines that outlives the programs that print on it: they lose answers and die at the
// commands that a script names, before or after the command takes effect.
#pragma once

#include <string>
#include <vector>

#include "till/course/sale_printer.h"

namespace zentaro::testing {

using till::Fate;
using till::SaleStep;

/// When the printer gives the number of a document.
enum class Numbers { AtTheOpening, InTheStatus, AtTheClose };

/// What is printed here stands in `papers`: the content of each document that was counted.
struct FiscalMemory {
  Numbers numbers = Numbers::AtTheOpening;
  bool hasDayFigures = true;
  int document = 0;
  std::int64_t lastNumber = 7, day = 10000, lastZ = 3, net = 0;
  std::string content;  // of the open document
  std::vector<std::string> papers;

  bool open(const std::string& what, std::int64_t amount) {
    if (document != 0) return false;
    document = 1;
    content = what;
    net = amount;
    if (numbers != Numbers::AtTheClose) ++lastNumber;
    return true;
  }
  // A document without items cannot be paid.
  bool count() {
    if (document == 0 || net == 0) return false;
    if (numbers == Numbers::AtTheClose) ++lastNumber;
    document = 0;
    day += net;
    papers.push_back(content);
    return true;
  }
  bool cancel() {
    if (document != 1) return false;
    document = 0;
    return true;
  }
  bool closeDay() {
    if (document != 0) return false;
    ++lastZ;
    day = 0;
    return true;
  }
  std::size_t papersOf(const std::string& what) const {
    return static_cast<std::size_t>(std::count(papers.begin(), papers.end(), what));
  }
};

/// The program is killed.
struct Death {};

/// Commands are counted from 1, the questions among them. 0: never.
struct Script {
  int diesAt = 0, losesAt = 0;
  bool diesAfterIt = false, losesAfterIt = false;  // after the command took effect
};

class ScriptedPrinter : public till::SalePrinter {
 public:
  ScriptedPrinter(FiscalMemory& memory, std::string content, std::int64_t net, const Script& script)
      : memory_(memory), content_(std::move(content)), net_(net), script_(script) {}

  till::Reply send(const SaleStep& step) override {
    if (step.kind == SaleStep::Kind::Open) return sent([&] { return memory_.open(content_, 0); });
    if (step.label == "item") return sent([&] { return memory_.document == 1 && (memory_.net = net_) != 0; });
    if (step.label == "text") return sent([&] { return memory_.document != 0; });
    if (step.label == "partial") return sent([&] { return memory_.document = 4, true; });
    return sent([&] { return memory_.count(); });
  }
  till::Reply cancel() override {
    return sent([&] { return memory_.cancel(); });
  }
  till::Reply finish() override {
    return sent([&] { return memory_.count(); });
  }
  std::optional<till::Standing> counters() override {
    sent([] { return true; }, true);
    const bool tellsDay = memory_.document == 0 && memory_.hasDayFigures;
    return till::Standing{memory_.document, memory_.lastNumber,
                          tellsDay ? std::optional(memory_.day) : std::nullopt, memory_.lastZ};
  }
  std::string trouble() const override { return "silent"; }
  std::optional<std::int64_t> lastNumber() override {
    const bool isLost = sent([] { return true; }).fate == Fate::Lost;
    return isLost ? std::nullopt : std::optional(memory_.lastNumber);
  }
  std::optional<std::int64_t> openedNumber() const override {
    return memory_.numbers == Numbers::AtTheOpening ? std::optional(memory_.lastNumber) : std::nullopt;
  }
  std::optional<till::Receipt> receipt() const override { return std::nullopt; }

  int commands() const { return commands_; }

 private:
  // A question is asked again until it is answered.
  template <class Effect>
  till::Reply sent(const Effect& effect, bool isPersistent = false) {
    ++commands_;
    if (commands_ == script_.diesAt && !script_.diesAfterIt) throw Death();
    const bool isLost = commands_ == script_.losesAt && !isPersistent;
    if (isLost && !script_.losesAfterIt) return {Fate::Lost, "no answer"};
    const bool isDone = effect();
    if (commands_ == script_.diesAt) throw Death();
    if (isLost) return {Fate::Lost, "no answer"};
    return {isDone ? Fate::Done : Fate::Refused, ""};
  }

  FiscalMemory& memory_;
  std::string content_;
  std::int64_t net_;
  Script script_;
  int commands_ = 0;
};

}  // namespace zentaro::testing
