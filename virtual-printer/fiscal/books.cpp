// Entries into the books.
#include "virtual-printer/fiscal/books.h"

#include <algorithm>

namespace virtual_printer {
namespace {

void add(BySlot& to, const BySlot& amounts) {
  for (std::size_t slot = 0; slot < slots; ++slot) to[slot] += amounts[slot];
}

void add(Figures& to, const Document& document) {
  add(to.bases, document.bases());
  add(to.taxes, document.taxes());
  to.igtfBase += document.igtfBase;
  to.igtf += document.igtf;
}

}  // namespace

int& Books::counterOf(DocumentKind kind) {
  switch (kind) {
    case DocumentKind::CreditNote: return counters.creditNote;
    case DocumentKind::NonFiscal: return counters.nonFiscal;
    case DocumentKind::Invoice: break;
  }
  return counters.invoice;
}

bool Books::hasRoomFor(DocumentKind kind) {
  constexpr Cents largestDocument = 10 * largestAmount;  // with taxes, IGTF and discounts
  const auto fits = [](const Figures& figures) {
    return std::max({std::ranges::max(figures.bases), std::ranges::max(figures.taxes), figures.igtfBase,
                     figures.igtf}) <= largestTotal - largestDocument;
  };
  const int numbers =
      std::max({counterOf(kind), day.invoices, day.creditNotes, day.nonFiscals, day.cancelled});
  return numbers < largestNumber && fits(day.sales) && fits(day.returns) &&
         std::max(day.discounts, day.discountTax) <= largestTotal - largestDocument;
}

void Books::enter(const Document& document, LocalTime now) {
  open.reset();
  if (document.kind == DocumentKind::NonFiscal) {
    ++day.nonFiscals;
    return;
  }
  day.rates = document.rates;
  if (document.kind == DocumentKind::CreditNote) {
    ++day.creditNotes;
    add(day.returns, document);
    return;
  }
  ++day.invoices;
  add(day.sales, document);
  day.discounts += sum(document.discounts);
  day.discountTax += sum(document.taxesOf(document.lines)) - document.tax();
  lastInvoice = {document.number, now};
}

void Books::enterCancelled() {
  open.reset();
  ++day.cancelled;
}

const ZRecord& Books::closeDay(LocalTime now) {
  zRecords.push_back({++counters.z, now, day, lastInvoice});
  day = {};
  return zRecords.back();
}

}  // namespace virtual_printer
