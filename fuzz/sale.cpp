// Sale files. One that is found in order must be taken by the virtual printer's own fiscal machine, line by
// line, and come to the same amounts there: two programs that share no line of arithmetic.
#include "check.h"
#include "till/document/sale_file.h"
#include "till/document/totals.h"
#include "virtual-printer/fiscal/machine.h"

namespace {

using namespace zentaro::till;
using fuzz::require;

void print(const Sale& sale, const Totals& totals) {
  virtual_printer::Books books;
  virtual_printer::Machine machine(books, static_cast<virtual_printer::Rate>(sale.igtf.rate));
  const auto kind =
      sale.isCreditNote ? virtual_printer::DocumentKind::CreditNote : virtual_printer::DocumentKind::Invoice;
  machine.open(kind);
  for (const Line& line : sale.lines) {
    const Item* item = std::get_if<Item>(&line);
    if (item == nullptr) continue;
    machine.addItem(kind, item->description, item->quantity, item->price,
                    static_cast<virtual_printer::Rate>(item->tax));
  }
  for (const Discount& discount : sale.discounts) machine.discount(discount.amount);
  require(machine.document().net() == totals.net, "the net amount is the printer's");
  require(machine.document().tax() == totals.tax, "the tax is the printer's");
  for (const Payment& payment : sale.payments) machine.pay(payment.amount);
  machine.close(sale.extraLines.empty() ? virtual_printer::Closing::Total : virtual_printer::Closing::Partial,
                sale.igtf.base, {});
  require(machine.document().igtf == totals.igtf, "the IGTF is the printer's");
  require(sale.isCreditNote || machine.document().change() == totals.change(), "the change is the printer's");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  SaleReading reading = readSale(fuzz::textOf(data, size));
  if (!reading.problems.empty()) return 0;
  const Totals totals = reckon(reading.sale, reading.problems);
  if (!reading.problems.empty()) return 0;
  try {
    print(reading.sale, totals);
  } catch (const virtual_printer::Refused& refusal) {
    std::fprintf(stderr, "%s\n", virtual_printer::refusalTexts[static_cast<std::size_t>(refusal.why)]);
    require(false, "a sale that is found in order is not refused");
  }
  return 0;
}
