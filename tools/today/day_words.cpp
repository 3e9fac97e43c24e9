// Wording.
#include "tools/today/day_words.h"

#include <utility>

#include "base/files/json.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "till/document/decimal.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

std::string figure(std::string_view name, const std::string& value) {
  constexpr std::size_t widestName = 24, widestAmount = 20;
  return terminal::padded(std::string(name), widestName) + terminal::paddedLeft(value, widestAmount) + "\n";
}

std::string soldText(std::string_view title, const Sold& sold) {
  std::string text = figure(title, std::to_string(sold.documents));
  if (sold.documents == 0) return text;
  text += figure(say("  sin impuesto", "  net"), paperAmount(sold.net));
  if (sold.tax != 0 || sold.taxOrIgtf == 0) text += figure(say("  impuesto", "  tax"), paperAmount(sold.tax));
  if (sold.igtf != 0) text += figure("  IGTF", paperAmount(sold.igtf));
  if (sold.taxOrIgtf != 0)
    text += figure(say("  impuesto e IGTF", "  tax and IGTF"), paperAmount(sold.taxOrIgtf));
  return text + figure("  total Bs", paperAmount(sold.total()));
}

Json jsonOf(const Sold& sold) {
  const auto amount = [](std::int64_t cents) { return till::decimalText(cents, 2); };
  return {{"documents", sold.documents},
          {"net", amount(sold.net)},
          {"tax", amount(sold.tax)},
          {"igtf", amount(sold.igtf)},
          {"taxOrIgtf", amount(sold.taxOrIgtf)},
          {"total", amount(sold.total())}};
}

}  // namespace

std::string dayText(const Range& range, const DayFigures& figures, const std::optional<PrinterDay>& printer) {
  std::string page = range.from == range.to
                         ? say("Ventas del {}\n", "Sales of {}\n", {range.from})
                         : say("Ventas del {} al {}\n", "Sales from {} to {}\n", {range.from, range.to});
  page += soldText(say("Facturas", "Invoices"), figures.invoices);
  page += soldText(say("Notas de crédito", "Credit notes"), figures.returns);
  page += figure(say("Queda, total Bs", "Remains, total Bs"),
                 paperAmount(figures.invoices.total() - figures.returns.total()));
  for (const till::Job& job : figures.unknown)
    page += say("NO SE SABE si se imprimió: {} (Bs {}); mire el papel\n",
                "NOT KNOWN whether it was printed: {} (Bs {}); look at the paper\n",
                {harmless(job.id.empty() ? "#" + std::to_string(job.key) : job.id), paperAmount(job.total)});
  if (figures.lastZ && figures.lastZ->number)
    page += figure(say("Último Z", "Last Z"), std::to_string(*figures.lastZ->number));
  if (!printer) return page;
  page += say("\nLa impresora {}, desde su Z {}\n", "\nThe printer {}, since its Z {}\n",
              {harmless(printer->serialNumber), std::to_string(printer->lastZ)});
  page += figure(say("  sin impuesto", "  net"), paperAmount(printer->net));
  page += figure(say("  impuesto", "  tax"), paperAmount(printer->tax));
  page += figure(say("  devuelto, sin impuesto", "  returned, net"), paperAmount(printer->returned));
  return page + figure(say("  última factura", "  last invoice"), std::to_string(printer->lastInvoice));
}

Json dayJson(const Range& range, const DayFigures& figures, const std::optional<PrinterDay>& printer) {
  Json unknown = Json::array();
  for (const till::Job& job : figures.unknown)
    unknown.push_back({{"id", job.id}, {"total", till::decimalText(job.total, 2)}});
  Json page{{"from", range.from},
            {"to", range.to},
            {"invoices", jsonOf(figures.invoices)},
            {"creditNotes", jsonOf(figures.returns)},
            {"unknown", unknown},
            {"lastZ", figures.lastZ && figures.lastZ->number ? Json(*figures.lastZ->number) : Json()}};
  if (printer)
    page["printer"] = {
        {"serialNumber", printer->serialNumber},     {"lastZ", printer->lastZ},
        {"lastInvoice", printer->lastInvoice},       {"net", till::decimalText(printer->net, 2)},
        {"tax", till::decimalText(printer->tax, 2)}, {"returned", till::decimalText(printer->returned, 2)}};
  return page;
}

std::string dayCsv(const Range& range, const DayFigures& figures) {
  std::string csv = "from,to,kind,documents,net,tax,igtf,tax_or_igtf,total\n";
  for (const auto& [kind, sold] :
       {std::pair("invoices", &figures.invoices), std::pair("credit-notes", &figures.returns)}) {
    csv += range.from + "," + range.to + "," + kind + "," + std::to_string(sold->documents);
    for (const std::int64_t cents : {sold->net, sold->tax, sold->igtf, sold->taxOrIgtf, sold->total()})
      csv += "," + till::decimalText(cents, 2);
    csv += "\n";
  }
  return csv + range.from + "," + range.to + ",unknown," + std::to_string(figures.unknown.size()) + ",,,,,\n";
}

}  // namespace zentaro::tools
