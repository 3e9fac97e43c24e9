// The calls, over their courses.
#include "till/zentaro_till.h"

#include "base/terminal/language.h"
#include "printer/cached_settings.h"
#include "till/course/closing.h"
#include "till/course/sale_course.h"

namespace zentaro::till {

using terminal::say;

namespace {

// What the library would raise in the middle of the document.
Problems settingProblems(int length) {
  constexpr int longest = 32767 - 14;  // the lines of text have 14 more, in 16 bits
  if (length >= 0 && length <= longest) return {};
  return {{"LenDescripcionZT",
           say("es {} en la configuración; póngalo bien: zentaro settings set LenDescripcionZT 20",
               "is {} in the settings; put it right: zentaro settings set LenDescripcionZT 20",
               {std::to_string(length)})}};
}

struct Reading {
  Document document;
  Problems problems;
};

Reading checked(SaleReading read) {
  Reading made{{std::move(read.sale), {}}, std::move(read.problems)};
  if (made.problems.empty()) made.document.totals = reckon(made.document.sale, made.problems);
  if (made.problems.empty()) made.problems = settingProblems(readLenDescripcion());
  return made;
}

Document inOrder(Reading&& reading) {
  std::vector<Problem>& problems = reading.problems;
  if (problems.empty()) return std::move(reading.document);
  std::string text;
  for (const Problem& problem : problems)
    text += (text.empty() ? "" : "; ") + problem.path + (problem.path.empty() ? "" : ": ") + problem.text;
  throw WrongUse(text, std::move(problems));
}

Checked checkedOf(Reading&& reading) {
  Checked made{std::move(reading.problems), {}, {}};
  if (!made.problems.empty()) return made;
  made.totals = reading.document.totals;
  made.warnings = paperWarnings(reading.document.sale, readLenDescripcion());
  return made;
}

void demandOpenPort(const CZentaro& printer) {
  if (!printer.isPortOpen)
    throw WrongUse(
        say("el puerto está cerrado: ponga PortOpen primero", "the port is closed: put PortOpen first"));
}

PrinterLine lineOf(CZentaro& printer, const Options& options) {
  return PrinterLine(printer, patienceOf(options.giveUp), options.observer, options.stop.isWanted);
}

}  // namespace

Document documentOf(Sale sale) { return inOrder(checked({std::move(sale), {}})); }
Document documentOf(std::string_view json) { return inOrder(checked(readSale(json))); }
Document documentOf(const Node& root) { return inOrder(checked(readSale(root))); }

Checked check(std::string_view json) { return checkedOf(checked(readSale(json))); }
Checked check(const Node& root) { return checkedOf(checked(readSale(root))); }

Verdict sell(CZentaro& printer, const Document& document, const SellOptions& options) {
  if (!options.id.empty() && !isJobId(options.id))
    throw WrongUse(say("\"{}\" no es un id: de 1 a 128 de A-Z a-z 0-9 . _ ~ : -",
                       "\"{}\" is no id: 1 to 128 of A-Z a-z 0-9 . _ ~ : -", {options.id}));
  demandOpenPort(printer);
  SaleCourse course(document.sale, document.totals, options);
  PrinterLine line = lineOf(printer, options);
  Verdict verdict = course.print(printer, line);
  course.told();
  return verdict;
}

ClosingVerdict close(CZentaro& printer, Kind kind, const CloseOptions& options) {
  demandOpenPort(printer);
  ClosingCourse course(kind, options);
  PrinterLine line = lineOf(printer, options);
  ClosingVerdict verdict = course.print(printer, line);
  course.told();
  return verdict;
}

Settled settle(CZentaro& printer, const Options& options) {
  demandOpenPort(printer);
  Station station(options, BooksNeed::Required);
  PrinterLine line = lineOf(printer, options);
  Settled made;
  made.refusal = station.arrive(printer, line, made.cause);
  made.machine = station.machine();
  made.judged = station.judged();
  if (!made.refusal && station.books() != nullptr) made.open = station.books()->unsettled(made.machine);
  return made;
}

std::vector<Job> jobs(int most) { return Books().latest(most); }

std::optional<Job> find(std::string_view id) { return Books().find(id); }

}  // namespace zentaro::till
