// The calls, over their courses.
#include "till/zentaro_till.h"

#include "base/terminal/language.h"
#include "printer/cached_settings.h"
#include "till/course/closing.h"
#include "till/course/sale_course.h"

namespace zentaro::till {

using terminal::say;

namespace {

Document checked(Sale sale, Problems problems) {
  Totals totals;
  if (problems.empty()) totals = reckon(sale, problems);
  if (problems.empty()) return {std::move(sale), totals};
  std::string text;
  for (const Problem& problem : problems)
    text += (text.empty() ? "" : "; ") + problem.path + (problem.path.empty() ? "" : ": ") + problem.text;
  throw WrongUse(text, std::move(problems));
}

void demandOpenPort(const CZentaro& printer) {
  if (!printer.isPortOpen)
    throw WrongUse(std::string(
        say("el puerto está cerrado: ponga PortOpen primero", "the port is closed: put PortOpen first")));
}

PrinterLine lineOf(CZentaro& printer, const Options& options) {
  return PrinterLine(printer, patienceOf(options.giveUp), options.observer, options.stop.isWanted);
}

int descriptionLength() {
  constexpr int usual = 20;
  const int length = readLenDescripcion();
  return length > 0 ? length : usual;
}

}  // namespace

Document documentOf(Sale sale) { return checked(std::move(sale), {}); }

Document documentOf(std::string_view json) {
  auto [sale, problems] = readSale(json);
  return checked(std::move(sale), std::move(problems));
}

namespace {

Checked checkedOf(SaleReading reading) {
  Checked made;
  auto& [sale, problems] = reading;
  if (problems.empty()) made.totals = reckon(sale, problems);
  if (problems.empty()) made.warnings = paperWarnings(sale, descriptionLength());
  made.problems = std::move(problems);
  return made;
}

}  // namespace

Checked check(std::string_view json) { return checkedOf(readSale(json)); }
Checked check(const Node& root) { return checkedOf(readSale(root)); }

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
