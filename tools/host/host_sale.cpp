// The calls, with what a request says and what its answer holds.
#include "tools/host/host_sale.h"

#include <iostream>
#include <memory>

#include "automation/conversions.h"
#include "base/files/json.h"
#include "base/system/interruption.h"
#include "base/terminal/language.h"
#include "till/course/figures.h"
#include "till/course/sale_course.h"
#include "till/words/call_words.h"
#include "till/words/closing_words.h"
#include "till/words/teller.h"
#include "till/words/verdict_words.h"
#include "till/zentaro_till.h"
#include "tools/host/rpc_error.h"

namespace zentaro::tools {

namespace {

till::Document documentFrom(const till::Node& node) {
  try {
    return till::documentOf(node);
  } catch (const till::WrongUse& error) {
    throw invalidParameters("\"document\" is not in order, nothing was sent: " + std::string(error.what()));
  }
}

till::Teller tellerOf(const TellProgress& progress) {
  return {till::byLine(progress), [](std::string_view text) { std::cerr << text << std::flush; }};
}

void demandOrder(const CZentaro& printer, const std::string& key) {
  if (!key.empty() && !till::isJobId(key))
    throw invalidParameters("\"id\" is not 1 to 128 characters of A-Z a-z 0-9 . _ ~ : -");
  if (!printer.isPortOpen) throw invalidParameters("the port of the object is closed: put PortOpen first");
}

std::string portNumber(const CZentaro& printer) { return std::to_string(toInt16(printer.CommPort)); }

till::SalePlace placeOf(const CZentaro& printer) { return {"--port " + portNumber(printer)}; }

void prepare(till::Options& options, const CZentaro& printer, till::Teller& teller) {
  options.stop = {base::Interruption::isRequested,
                  terminal::say("interrumpido por una señal", "interrupted by a signal")};
  options.observer = &teller;
  options.owner = "host";
  options.printerName = "COM" + portNumber(printer);
}

/// What outlives the answer: the books are told when it was delivered.
struct Kept {
  Kept(till::Document made, const TellProgress& progress)
      : document(std::move(made)), teller(tellerOf(progress)) {}

  till::Document document;
  till::Teller teller;
  std::optional<till::SaleCourse> course;
};

}  // namespace

HostVerdict sellOn(CZentaro& printer, const HostSale& sale, const TellProgress& progress) {
  const auto kept = std::make_shared<Kept>(documentFrom(sale.document), progress);
  const base::Interruption interruption;
  demandOrder(printer, sale.key);
  till::SellOptions options;
  prepare(options, printer, kept->teller);
  options.id = sale.key;
  options.again = sale.again;
  kept->course.emplace(kept->document.sale, kept->document.totals, options);
  till::PrinterLine line(printer, till::patienceOf({}), &kept->teller, base::Interruption::isRequested);
  const till::Verdict verdict = kept->course->print(printer, line);
  return {till::verdictJson(verdict, placeOf(printer)), [kept] { kept->course->told(); }};
}

Json closeOn(CZentaro& printer, const HostClosing& closing, const TellProgress& progress) {
  const bool isZ = closing.closing == "Z";
  if (!isZ && closing.closing != "X") throw invalidParameters("\"closing\" must be \"X\" or \"Z\"");
  const base::Interruption interruption;
  demandOrder(printer, closing.key);
  till::Teller teller = tellerOf(progress);
  till::CloseOptions options;
  prepare(options, printer, teller);
  options.id = closing.key;
  options.evenIfUnknown = closing.evenIfUnknown;
  const till::ClosingVerdict verdict = till::close(printer, isZ ? till::Kind::Z : till::Kind::X, options);
  Json json = till::closingJson(verdict, placeOf(printer));
  json["figures"] = verdict.figures ? till::figuresJson(*verdict.figures) : Json(nullptr);
  return json;
}

Json settleOn(CZentaro& printer, const TellProgress& progress) {
  const base::Interruption interruption;
  demandOrder(printer, {});
  till::Teller teller = tellerOf(progress);
  till::Options options;
  prepare(options, printer, teller);
  return till::settledJson(till::settle(printer, options));
}

}  // namespace zentaro::tools
