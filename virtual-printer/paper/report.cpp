// Setting of reports.
#include "paper/report.h"

#include <algorithm>

namespace printer {
namespace {

Cents total(const Figures& figures) { return sum(figures.bases) + sum(figures.taxes); }

void addFigures(Lines& lines, const std::string& title, const Figures& figures, const RateTable& rates) {
  addText(lines, title, LineStyle::bold);
  addPair(lines, "EXENTO (E)", bolivares(figures.bases[0]));
  for (std::size_t slot = 1; slot < slots; ++slot) {
    if (rates.rates[slot] == 0) continue;
    addPair(lines, "BI " + rateLabel(rates, slot), bolivares(figures.bases[slot]));
    addPair(lines, "IVA " + rateLabel(rates, slot), bolivares(figures.taxes[slot]));
  }
  if (figures.igtfBase != 0) {
    addPair(lines, "BI IGTF", bolivares(figures.igtfBase));
    addPair(lines, "IGTF", bolivares(figures.igtf));
  }
  addPair(lines, "TOTAL " + title, bolivares(total(figures) + figures.igtf), LineStyle::bold);
  lines.push_back(ruleLine());
}

Lines reportHeading(const Owner& owner, const std::string& title) {
  Lines lines = headingLines(owner, {});
  addMiddle(lines, title, LineStyle::title);
  return lines;
}

void addMemoryTotals(Lines& lines, std::span<const ZRecord> records) {
  Cents sales = 0;
  Cents tax = 0;
  Cents returns = 0;
  for (const ZRecord& record : records) {
    sales += total(record.totals.sales);
    tax += sum(record.totals.sales.taxes);
    returns += total(record.totals.returns);
  }
  addPair(lines, "CIERRES Z", std::to_string(records.size()));
  addPair(lines, "IVA", bolivares(tax));
  addPair(lines, "DEVOLUCIONES", bolivares(returns));
  addPair(lines, "VENTAS", bolivares(sales), LineStyle::title);
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
    if (detail == MemoryDetail::totalsOnly) break;
    addPair(lines, "Z " + eightDigits(record.number), paperDate(record.closedAt), LineStyle::bold);
    addPair(lines, "VENTAS", bolivares(total(record.totals.sales)));
    addPair(lines, "IVA", bolivares(sum(record.totals.sales.taxes)));
    addPair(lines, "DEVOLUCIONES", bolivares(total(record.totals.returns)));
    lines.push_back(ruleLine());
  }
  addMemoryTotals(lines, records);
  addMachine(lines, owner);
  return lines;
}

}  // namespace printer
