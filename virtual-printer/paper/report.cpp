// Setting of reports.
#include "virtual-printer/paper/report.h"

namespace virtual_printer {
namespace {

// What sales or returns came to: bases and taxes. IGTF is a tax on the means of payment and stands apart.
Cents total(const Figures& figures) { return sum(figures.bases) + sum(figures.taxes); }

void addFigures(Lines& lines, const std::string& title, const Figures& figures, const RateTable& rates) {
  addText(lines, title, LineStyle::Bold);
  addPair(lines, "EXENTO (E)", bolivares(figures.bases[0]));
  for (std::size_t slot = 1; slot < slots; ++slot) {
    if (rates.rates[slot] == 0) continue;
    addPair(lines, "BI " + rateLabel(rates, slot), bolivares(figures.bases[slot]));
    addPair(lines, "IVA " + rateLabel(rates, slot), bolivares(figures.taxes[slot]));
  }
  addPair(lines, "TOTAL " + title, bolivares(total(figures)), LineStyle::Bold);
  if (figures.igtfBase != 0) {
    addPair(lines, "BI IGTF", bolivares(figures.igtfBase));
    addPair(lines, "IGTF", bolivares(figures.igtf));
  }
  lines.push_back(ruleLine());
}

Lines reportHeading(const Owner& owner, const std::string& title) {
  Lines lines = headingLines(owner, {});
  addMiddle(lines, title, LineStyle::Title);
  return lines;
}

struct Sums {
  Cents sales = 0, tax = 0, igtf = 0, returns = 0;
};

Sums sumsOf(std::span<const ZRecord> records) {
  Sums sums;
  for (const ZRecord& record : records) {
    sums.sales = plus(sums.sales, total(record.totals.sales));
    sums.tax = plus(sums.tax, sum(record.totals.sales.taxes));
    sums.igtf = plus(sums.igtf, record.totals.sales.igtf);
    sums.returns = plus(sums.returns, total(record.totals.returns));
  }
  return sums;
}

void addSums(Lines& lines, const Sums& sums, LineStyle salesStyle) {
  addPair(lines, "VENTAS", bolivares(sums.sales), salesStyle);
  addPair(lines, "IVA", bolivares(sums.tax));
  addPair(lines, "IGTF", bolivares(sums.igtf));
  addPair(lines, "DEVOLUCIONES", bolivares(sums.returns));
}

}  // namespace

Lines dayReportLines(const Owner& owner, const std::string& title, const ZRecord& day) {
  Lines lines = reportHeading(owner, title);
  addPair(lines, "FECHA: " + paperDate(day.closedAt), "HORA: " + paperTime(day.closedAt));
  lines.push_back(ruleLine());
  const DayTotals& totals = day.totals;
  addFigures(lines, "VENTAS", totals.sales, totals.rates);
  addFigures(lines, "DEVOLUCIONES", totals.returns, totals.rates);
  addPair(lines, "DESCUENTOS", bolivares(totals.discounts));
  addPair(lines, "IVA DE DESCUENTOS", bolivares(totals.discountTax));
  lines.push_back(ruleLine());
  addPair(lines, "FACTURAS", std::to_string(totals.invoices));
  addPair(lines, "NOTAS DE CREDITO", std::to_string(totals.creditNotes));
  addPair(lines, "DOCUMENTOS NO FISCALES", std::to_string(totals.nonFiscals));
  addPair(lines, "DOCUMENTOS ANULADOS", std::to_string(totals.cancelled));
  if (day.lastInvoice.number > 0) addPair(lines, "ULTIMA FACTURA", eightDigits(day.lastInvoice.number));
  addMachine(lines, owner);
  return lines;
}

Lines memoryReportLines(const Owner& owner, const std::string& range, std::span<const ZRecord> records,
                        MemoryDetail detail) {
  Lines lines = reportHeading(owner, "MEMORIA FISCAL");
  addMiddle(lines, range);
  lines.push_back(ruleLine());
  for (const ZRecord& record : records) {
    if (detail == MemoryDetail::TotalsOnly) break;
    addPair(lines, "Z " + eightDigits(record.number), paperDate(record.closedAt), LineStyle::Bold);
    addSums(lines, sumsOf({&record, 1}), LineStyle::Plain);
    lines.push_back(ruleLine());
  }
  addPair(lines, "CIERRES Z", std::to_string(records.size()));
  addSums(lines, sumsOf(records), LineStyle::Title);
  addMachine(lines, owner);
  return lines;
}

}  // namespace virtual_printer
