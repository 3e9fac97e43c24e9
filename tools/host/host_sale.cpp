// A sale from a document in a request to its verdict.
#include "tools/host/host_sale.h"

#include <memory>
#include <ostream>
#include <streambuf>

#include "automation/conversions.h"
#include "base/files/json.h"
#include "till/document/sale_file.h"
#include "tools/connection/connection.h"
#include "tools/host/rpc_error.h"
#include "tools/sale/sale_job.h"

namespace zentaro::tools {

namespace {

/// Hands on what is written to it, line by line.
class Lines : public std::streambuf {
 public:
  explicit Lines(const std::function<void(std::string_view)>& take) : take_(take) {}

 protected:
  int_type overflow(int_type next) override {
    if (next == '\n') {
      take_(line_);
      line_.clear();
    } else if (next != traits_type::eof()) {
      line_ += traits_type::to_char_type(next);
    }
    return traits_type::not_eof(next);
  }

 private:
  const std::function<void(std::string_view)>& take_;
  std::string line_;
};

[[noreturn]] void refuse(const Problems& problems) {
  std::string text;
  for (const Problem& problem : problems) {
    text += (text.empty() ? "\"document\" is not in order, nothing was sent: " : "; ") + problem.path +
            (problem.path.empty() ? "" : ": ") + problem.text;
  }
  throw invalidParameters(text);
}

SaleOrder orderOf(const HostSale& asked, const std::string& device) {
  auto [sale, problems] = readSale(asked.document);
  if (!problems.empty()) refuse(problems);
  const Totals totals = reckon(sale, problems);
  if (!problems.empty()) refuse(problems);
  return {std::move(sale), totals, asked.key, asked.again, device};
}

}  // namespace

HostVerdict sellOn(CZentaro& printer, const HostSale& sale,
                   const std::function<void(std::string_view)>& progress) {
  const std::string number = std::to_string(toInt16(printer.CommPort));
  const auto kept = std::make_shared<SaleJob>(orderOf(sale, "COM" + number));
  SaleJob& job = *kept;
  if (!printer.isPortOpen) throw invalidParameters("the port of the object is closed: put PortOpen first");
  const Interruption interruption;
  job.openJournal();
  if (const auto verdict = job.refusal()) return {verdictJson(*verdict)};
  PrinterLine line(printer, patienceOf({}, timeOutSeconds()));
  const SalePrinterPort port{printer, line, {"--port " + number}};
  if (const auto end = SaleJob::getInStep(port)) return {verdictJson(*end, job.totals(), port.place)};
  if (const auto verdict = job.refusal(port)) return {verdictJson(*verdict)};
  Lines lines(progress);
  std::ostream told(&lines);
  const SaleEnd end = job.print(port, told, Interruption::isRequested);
  return {verdictJson(end, job.totals(), port.place), [kept] { kept->told(); }};
}

}  // namespace zentaro::tools
