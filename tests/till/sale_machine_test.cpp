// The course of a sale over a printer that says what the row tells it to say.
#include "till/course/sale_machine.h"

#include <gtest/gtest.h>

#include <variant>
#include <vector>

#include "till/course/sale_printer.h"
#include "tools/sale/exit_status.h"

namespace zentaro::till::sale_machine_test {

constexpr Fate done = Fate::Done, refused = Fate::Refused, lost = Fate::Lost;
const std::optional<Standing> silent;

// The day's amounts before are 100.00; the document adds 5.00.
std::optional<Standing> idle(std::int64_t number, std::int64_t day) { return Standing{0, number, day, 3}; }
std::optional<Standing> open(std::int64_t number) { return Standing{1, number, {}, 3}; }
std::optional<Standing> partial(std::int64_t number) { return Standing{partiallyClosed, number, {}, 3}; }
std::optional<Standing> withoutFigures(std::int64_t number) { return Standing{0, number, {}, 3}; }

char letter(Action action) { return "ASCF."[static_cast<std::size_t>(action)]; }

/// The number that the printer has is another job's, which was printed.
struct Held {
  std::optional<Standing> now;
};
using Event = std::variant<Fate, std::optional<Standing>, Held>;

struct Row {
  const char* name;
  std::vector<Event> events;
  const char* actions;  // A ask, S send, C cancel, F finish, . stop
  Ending ending;
  std::size_t firstClose = 2;
};

void check(const Row& row, std::size_t steps, Cents net) {
  Job job;
  job.net = net;
  SaleMachine machine(steps, row.firstClose, job);
  std::string actions;
  for (const Event& event : row.events) {
    actions += letter(machine.next());
    if (const Fate* fate = std::get_if<Fate>(&event))
      machine.sent(*fate);
    else if (const Held* held = std::get_if<Held>(&event))
      machine.counted(held->now, State::Printed);
    else
      machine.counted(std::get<std::optional<Standing>>(event));
  }
  EXPECT_EQ(actions + letter(machine.next()), row.actions) << row.name;
  EXPECT_EQ(nameOf(machine.ending()), nameOf(row.ending)) << row.name;
}

TEST(SaleMachine, EndsInAStatedWay) {
  const Event before = idle(7, 10000);
  const Row rows[] = {
      {"all well", {before, done, done, done}, "ASSS.", Ending::Printed},
      {"no answer at the start", {silent}, "A.", Ending::Unreachable},
      {"a document is open before", {open(7)}, "A.", Ending::OpenBefore},
      {"open refused", {before, refused, idle(7, 10000)}, "ASA.", Ending::NotPrinted},
      {"open lost on the way", {before, lost, idle(7, 10000)}, "ASA.", Ending::NotPrinted},
      {"open's answer lost", {before, lost, open(8), done, idle(8, 10000)}, "ASACA.", Ending::NotPrinted},
      {"middle step refused",
       {before, done, refused, open(8), done, idle(8, 10000)},
       "ASSACA.",
       Ending::NotPrinted},
      {"number given at the close only",
       {before, done, lost, open(7), done, idle(7, 10000)},
       "ASSACA.",
       Ending::NotPrinted},
      {"power cut in the middle", {before, done, lost, idle(8, 10000)}, "ASSA.", Ending::NotPrinted},
      {"middle step, then silence", {before, done, lost, silent}, "ASSA.", Ending::Unknown},
      {"cancelled, then silence", {before, done, lost, open(8), done, silent}, "ASSACA.", Ending::Unknown},
      {"cancellation's answer lost",
       {before, done, lost, open(8), lost, idle(8, 10000)},
       "ASSACA.",
       Ending::NotPrinted},
      {"cancellation lost, sent again",
       {before, done, lost, open(8), lost, open(8), done, idle(8, 10000)},
       "ASSACACA.",
       Ending::NotPrinted},
      {"cancellation refused twice",
       {before, done, refused, open(8), refused, open(8), refused, open(8)},
       "ASSACACA.",
       Ending::StillOpen},
      {"close's answer lost, counted", {before, done, done, lost, idle(8, 10500)}, "ASSSA.", Ending::Printed},
      {"close lost on the way",
       {before, done, done, lost, open(8), done, idle(8, 10000)},
       "ASSSACA.",
       Ending::NotPrinted},
      // A power cut cancels the document, and its number is used all the same.
      {"close lost in a power cut", {before, done, done, lost, idle(8, 10000)}, "ASSSA.", Ending::NotPrinted},
      {"another amount counted", {before, done, done, lost, idle(8, 10400)}, "ASSSA.", Ending::Unknown},
      {"two numbers used", {before, done, done, lost, idle(9, 10500)}, "ASSSA.", Ending::Unknown},
      // A sale that never reached its close was not printed, unless somebody closed it by hand.
      {"two numbers used before the close",
       {before, done, lost, idle(9, 10000)},
       "ASSA.",
       Ending::NotPrinted},
      {"closed by hand", {before, done, lost, idle(8, 10500)}, "ASSA.", Ending::Unknown},
      {"another till sold the same", {before, done, lost, Held{idle(8, 10500)}}, "ASSA.", Ending::NotPrinted},
      {"another till sold the same at the close",
       {before, done, done, lost, Held{idle(8, 10500)}},
       "ASSSA.",
       Ending::NotPrinted},
      {"another's document is open", {before, done, lost, open(9)}, "ASSA.", Ending::Unknown},
      {"another till's document is open", {before, lost, Held{open(8)}}, "ASA.", Ending::Unknown},
      {"no number used, but counted", {before, done, done, lost, idle(7, 10500)}, "ASSSA.", Ending::Unknown},
      {"number used, figures refused",
       {before, done, done, lost, withoutFigures(8)},
       "ASSSA.",
       Ending::Unknown},
      {"no number used, figures refused", {before, lost, withoutFigures(7)}, "ASA.", Ending::NotPrinted},
      {"partial close lost, then finished",
       {before, done, lost, partial(8), done},
       "ASSAF.",
       Ending::PrintedInPart,
       1},
      {"finished, its answer lost",
       {before, done, lost, partial(8), lost, idle(8, 10500)},
       "ASSAFA.",
       Ending::PrintedInPart,
       1},
      {"definitive close lost, finished again",
       {before, done, done, lost, partial(8), done},
       "ASSSAF.",
       Ending::Printed,
       1},
      {"cannot be finished",
       {before, done, done, lost, partial(8), refused, partial(8), refused, partial(8)},
       "ASSSAFAFA.",
       Ending::StillToBeClosed,
       1},
  };
  for (const Row& row : rows) check(row, 3, 500);
}

TEST(SaleMachine, GoesByTheNumberAloneWhenADocumentAddsNothing) {
  const Event before = idle(7, 10000);
  check({"nothing used", {before, lost, idle(7, 10000)}, "ASA.", Ending::NotPrinted}, 2, 0);
  check({"number used", {before, done, lost, idle(8, 10000)}, "ASSA.", Ending::Unknown}, 2, 0);
}

// A trace raises behind the frame; only an error of a value is certain to come before it.
TEST(SalePrinter, TakesAnErrorThatMayBeRaisedBehindTheFrameForALostAnswer) {
  CZentaro closed;
  PrinterLine line(closed, PrinterLine::Time(0));
  ObjectSalePrinter printer(closed, line, Kind::Invoice);
  for (const auto& [number, fate] :
       {std::pair{ErrorNumber::DiskFull, lost}, {ErrorNumber::TypeMismatch, refused}}) {
    const ErrorNumber raised = number;
    const auto raise = [raised](CZentaro&) -> std::int16_t { throw AutomationError(raised); };
    EXPECT_EQ(printer.send({SaleStep::Kind::Middle, "step", raise}).fate, fate);
  }
}

// Nobody may print again what could have been printed.
TEST(Verdict, IsToldToScriptsByTheExitStatus) {
  const std::vector<std::pair<Ending, int>> statuses{
      {Ending::Printed, 0},       {Ending::PrintedInPart, 0}, {Ending::NotPrinted, 3},
      {Ending::Unknown, 4},       {Ending::StillOpen, 4},     {Ending::StillToBeClosed, 4},
      {Ending::OpenBefore, 5},    {Ending::Unreachable, 3},   {Ending::AlreadyPrinted, 0},
      {Ending::PrintedBefore, 6}, {Ending::UnknownBefore, 4}, {Ending::OtherContent, 2},
      {Ending::Busy, 3}};
  for (const auto& [ending, status] : statuses) {
    Verdict verdict;
    verdict.ending = ending;
    EXPECT_EQ(tools::exitStatus(verdict), status) << nameOf(ending);
  }
}

}  // namespace zentaro::till::sale_machine_test
