// The course of a sale over a printer that says what the row tells it to say.
#include "till/course/sale_machine.h"

#include <gtest/gtest.h>

#include <variant>
#include <vector>

#include "tools/sale/verdict.h"

namespace zentaro::tools::sale_machine_test {

using Event = std::variant<Fate, std::optional<Counters>>;

constexpr Fate done = Fate::Done, refused = Fate::Refused, lost = Fate::Lost;
const std::optional<Counters> silent;

// The day's amounts before are 100.00; the document adds 5.00.
std::optional<Counters> idle(int number, Cents dayNet) { return Counters{0, number, dayNet}; }
std::optional<Counters> open(int number) { return Counters{1, number, {}}; }
std::optional<Counters> partial(int number) { return Counters{partiallyClosed, number, {}}; }
std::optional<Counters> withoutFigures(int number) { return Counters{0, number, {}}; }

char letter(Action action) { return "ASCF."[static_cast<std::size_t>(action)]; }

struct Row {
  const char* name;
  std::vector<Event> events;
  const char* actions;  // A ask, S send, C cancel, F finish, . stop
  Verdict verdict;
};

void check(const Row& row, std::size_t steps, Cents net) {
  SaleMachine machine(steps, net);
  std::string actions;
  for (const Event& event : row.events) {
    actions += letter(machine.next());
    if (const Fate* fate = std::get_if<Fate>(&event))
      machine.sent(*fate);
    else
      machine.counted(std::get<std::optional<Counters>>(event));
  }
  EXPECT_EQ(actions + letter(machine.next()), row.actions) << row.name;
  EXPECT_EQ(machine.verdict(), row.verdict) << row.name;
}

TEST(SaleMachine, EndsInAStatedWay) {
  const Event before = idle(7, 10000);
  const Row rows[] = {
      {"all well", {before, done, done, done}, "ASSS.", Verdict::Printed},
      {"no answer at the start", {silent}, "A.", Verdict::Unreachable},
      {"a document is open before", {open(7)}, "A.", Verdict::OpenBefore},
      {"open refused", {before, refused, idle(7, 10000)}, "ASA.", Verdict::NotPrinted},
      {"open lost on the way", {before, lost, idle(7, 10000)}, "ASA.", Verdict::NotPrinted},
      {"open's answer lost", {before, lost, open(8), done, idle(8, 10000)}, "ASACA.", Verdict::NotPrinted},
      {"middle step refused",
       {before, done, refused, open(8), done, idle(8, 10000)},
       "ASSACA.",
       Verdict::NotPrinted},
      {"number given at the close only",
       {before, done, lost, open(7), done, idle(7, 10000)},
       "ASSACA.",
       Verdict::NotPrinted},
      {"power cut in the middle", {before, done, lost, idle(8, 10000)}, "ASSA.", Verdict::NotPrinted},
      {"middle step, then silence", {before, done, lost, silent}, "ASSA.", Verdict::Unknown},
      {"cancelled, then silence", {before, done, lost, open(8), done, silent}, "ASSACA.", Verdict::Unknown},
      {"cancellation's answer lost",
       {before, done, lost, open(8), lost, idle(8, 10000)},
       "ASSACA.",
       Verdict::NotPrinted},
      {"cancellation lost, sent again",
       {before, done, lost, open(8), lost, open(8), done, idle(8, 10000)},
       "ASSACACA.",
       Verdict::NotPrinted},
      {"cancellation refused twice",
       {before, done, refused, open(8), refused, open(8), refused, open(8)},
       "ASSACACA.",
       Verdict::StillOpen},
      {"close's answer lost, counted",
       {before, done, done, lost, idle(8, 10500)},
       "ASSSA.",
       Verdict::Printed},
      {"close lost on the way",
       {before, done, done, lost, open(8), done, idle(8, 10000)},
       "ASSSACA.",
       Verdict::NotPrinted},
      // A power cut cancels the document, and its number is used all the same.
      {"close lost in a power cut",
       {before, done, done, lost, idle(8, 10000)},
       "ASSSA.",
       Verdict::NotPrinted},
      {"another amount counted", {before, done, done, lost, idle(8, 10400)}, "ASSSA.", Verdict::Unknown},
      {"two numbers used", {before, done, done, lost, idle(9, 10500)}, "ASSSA.", Verdict::Unknown},
      {"two numbers used, nothing counted", {before, done, lost, idle(9, 10000)}, "ASSA.", Verdict::Unknown},
      {"no number used, but counted", {before, done, done, lost, idle(7, 10500)}, "ASSSA.", Verdict::Unknown},
      {"number used, figures refused",
       {before, done, done, lost, withoutFigures(8)},
       "ASSSA.",
       Verdict::Unknown},
      {"no number used, figures refused", {before, lost, withoutFigures(7)}, "ASA.", Verdict::NotPrinted},
      {"partial close lost, then finished",
       {before, done, lost, partial(8), done},
       "ASSAF.",
       Verdict::PrintedInPart},
      {"finished, its answer lost",
       {before, done, lost, partial(8), lost, idle(8, 10500)},
       "ASSAFA.",
       Verdict::PrintedInPart},
      {"definitive close lost, finished again",
       {before, done, done, lost, partial(8), done},
       "ASSSAF.",
       Verdict::Printed},
      {"cannot be finished",
       {before, done, done, lost, partial(8), refused, partial(8), refused, partial(8)},
       "ASSSAFAFA.",
       Verdict::StillToBeClosed},
  };
  for (const Row& row : rows) check(row, 3, 500);
}

TEST(SaleMachine, GoesByTheNumberAloneWhenADocumentAddsNothing) {
  const Event before = idle(7, 10000);
  check({"nothing used", {before, lost, idle(7, 10000)}, "ASA.", Verdict::NotPrinted}, 2, 0);
  check({"number used", {before, done, lost, idle(8, 10000)}, "ASSA.", Verdict::Unknown}, 2, 0);
}

// A trace raises behind the frame; only an error of a value is certain to come before it.
TEST(SalePrinter, TakesAnErrorThatMayBeRaisedBehindTheFrameForALostAnswer) {
  CZentaro closed;
  PrinterLine line(closed, PrinterLine::Time(0));
  ObjectSalePrinter printer(closed, line, false);
  for (const auto& [number, fate] :
       {std::pair{ErrorNumber::DiskFull, lost}, {ErrorNumber::TypeMismatch, refused}}) {
    const ErrorNumber raised = number;
    const auto raise = [raised](CZentaro&) -> std::int16_t { throw AutomationError(raised); };
    EXPECT_EQ(printer.send({SaleStep::Kind::Middle, "step", raise}).fate, fate);
  }
}

// Nobody may print again what could have been printed.
TEST(SaleMachine, TellsScriptsTheVerdictByTheExitStatus) {
  const std::vector<std::pair<Verdict, int>> statuses{{Verdict::Printed, 0},    {Verdict::PrintedInPart, 0},
                                                      {Verdict::NotPrinted, 3}, {Verdict::Unknown, 4},
                                                      {Verdict::StillOpen, 4},  {Verdict::StillToBeClosed, 4},
                                                      {Verdict::OpenBefore, 5}, {Verdict::Unreachable, 3}};
  for (const auto& [verdict, status] : statuses) EXPECT_EQ(exitStatus(verdict), status);
}

}  // namespace zentaro::tools::sale_machine_test
