// A sale from a document in a request to its verdict.
#include "tools/host/host_sale.h"

#include <iostream>
#include <memory>

#include "automation/conversions.h"
#include "base/files/json.h"
#include "base/system/interruption.h"
#include "base/terminal/language.h"
#include "till/course/sale_course.h"
#include "till/words/teller.h"
#include "till/words/verdict_words.h"
#include "till/zentaro_till.h"
#include "tools/host/rpc_error.h"

namespace zentaro::tools {

namespace {

[[noreturn]] void refuse(const till::Problems& problems) {
  std::string text;
  for (const till::Problem& problem : problems) {
    text += (text.empty() ? "\"document\" is not in order, nothing was sent: " : "; ") + problem.path +
            (problem.path.empty() ? "" : ": ") + problem.text;
  }
  throw invalidParameters(text);
}

till::Document documentFrom(const till::Node& node) {
  auto [sale, problems] = till::readSale(node);
  if (!problems.empty()) refuse(problems);
  const till::Totals totals = till::reckon(sale, problems);
  if (!problems.empty()) refuse(problems);
  return {std::move(sale), totals};
}

/// What outlives the answer: the books are told when it was delivered.
struct Kept {
  Kept(till::Document made, const std::function<void(std::string_view)>& progress)
      : document(std::move(made)),
        teller(till::byLine(progress), [](std::string_view text) { std::cerr << text << std::flush; }) {}

  till::Document document;
  till::Teller teller;
  std::optional<till::SaleCourse> course;
};

}  // namespace

HostVerdict sellOn(CZentaro& printer, const HostSale& sale,
                   const std::function<void(std::string_view)>& progress) {
  const std::string number = std::to_string(toInt16(printer.CommPort));
  const auto kept = std::make_shared<Kept>(documentFrom(sale.document), progress);
  if (!sale.key.empty() && !till::isJobId(sale.key))
    throw invalidParameters("\"id\" is not 1 to 128 characters of A-Z a-z 0-9 . _ ~ : -");
  if (!printer.isPortOpen) throw invalidParameters("the port of the object is closed: put PortOpen first");
  const base::Interruption interruption;
  till::SellOptions options;
  options.stop = {base::Interruption::isRequested,
                  std::string(terminal::say("interrumpido por una señal", "interrupted by a signal"))};
  options.observer = &kept->teller;
  options.owner = "host";
  options.printerName = "COM" + number;
  options.id = sale.key;
  options.again = sale.again;
  kept->course.emplace(kept->document.sale, kept->document.totals, options);
  till::PrinterLine line(printer, till::patienceOf({}), &kept->teller, base::Interruption::isRequested);
  const till::Verdict verdict = kept->course->print(printer, line);
  return {till::verdictJson(verdict, {"--port " + number}), [kept] { kept->course->told(); }};
}

}  // namespace zentaro::tools
