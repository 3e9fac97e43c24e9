// The totals of a day, as the printer keeps them until the Z closing, and the record that is left of it then.
#pragma once

#include <chrono>

#include "virtual-printer/fiscal/calendar.h"
#include "virtual-printer/fiscal/document.h"

namespace virtual_printer {

/// Bases and taxes of the invoices or of the credit notes of a day.
struct Figures {
  BySlot bases{}, taxes{};
  Cents igtfBase = 0, igtf = 0;
  bool operator==(const Figures&) const = default;
};

struct DayTotals {
  RateTable rates;
  Figures sales, returns;
  Cents discounts = 0, discountTax = 0;  // of invoices
  int invoices = 0, creditNotes = 0, nonFiscals = 0, cancelled = 0;
  bool operator==(const DayTotals&) const = default;
};

struct LastInvoice {
  int number = 0;
  LocalTime closedAt{std::chrono::local_days{std::chrono::year{2000} / 1 / 1}};  // before the first invoice
  bool operator==(const LastInvoice&) const = default;
};

/// What a Z closing writes into the fiscal memory.
struct ZRecord {
  int number = 0;
  LocalTime closedAt{};
  DayTotals totals{};
  LastInvoice lastInvoice{};
  bool operator==(const ZRecord&) const = default;
};

}  // namespace virtual_printer
