// Adding up.
#include "tools/today/day_figures.h"

#include "till/document/sale_file.h"

namespace zentaro::tools {

namespace {

void add(Sold& sold, const till::Job& job) {
  ++sold.documents;
  sold.net += job.net;
  const till::SaleReading reading = till::readSale(job.body);
  if (job.body.empty() || !reading.problems.empty()) {
    sold.taxOrIgtf += job.total - job.net;
    return;
  }
  till::Problems none;
  const till::Totals totals = till::reckon(reading.sale, none);
  sold.tax += totals.tax;
  sold.igtf += totals.igtf;
}

}  // namespace

DayFigures figuresOf(const std::vector<till::Job>& jobs) {
  DayFigures figures;
  for (const till::Job& job : jobs) {
    const bool isPrinted = job.state == till::State::Printed;
    if (job.state == till::State::Unknown) figures.unknown.push_back(job);
    if (isPrinted && job.kind == till::Kind::Invoice) add(figures.invoices, job);
    if (isPrinted && job.kind == till::Kind::CreditNote) add(figures.returns, job);
    if (isPrinted && job.kind == till::Kind::Z) figures.lastZ = job;
  }
  return figures;
}

std::string paperAmount(std::int64_t cents) {
  const std::uint64_t amount =
      cents < 0 ? 0 - static_cast<std::uint64_t>(cents) : static_cast<std::uint64_t>(cents);
  std::string whole = std::to_string(amount / 100);
  for (std::size_t at = whole.size(); at > 3;) whole.insert(at -= 3, ".");
  const std::string decimals = std::to_string(100 + amount % 100).substr(1);
  return (cents < 0 ? "-" : "") + whole + "," + decimals;
}

}  // namespace zentaro::tools
