// What the printer remembers: counters, the totals of the day, the Z records of its fiscal memory, the texts
// that the owner programmed, and the document that is open. All of it is plain data and lives in the state
// file.
#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "fiscal/calendar.h"
#include "fiscal/document.h"

namespace printer {

struct Counters {
  int invoice = 0, creditNote = 0, nonFiscal = 0, z = 0;  // the last numbers given out
  bool operator==(const Counters&) const = default;
};

// Bases and taxes of the invoices or of the credit notes of a day.
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

struct ZRecord {
  int number = 0;
  LocalTime closedAt{};
  DayTotals totals;
  LastInvoice lastInvoice;
  bool operator==(const ZRecord&) const = default;
};

struct OpenMark {
  DocumentKind kind = DocumentKind::invoice;
  int number = 0;
  bool operator==(const OpenMark&) const = default;
};

inline constexpr std::size_t textLines = 5;
using TextLines = std::array<std::string, textLines>;

struct Books {
  Counters counters;
  DayTotals day;
  LastInvoice lastInvoice;
  std::vector<ZRecord> zRecords;
  TextLines header, footer;
  std::chrono::seconds clockOffset{0};
  std::optional<OpenMark> open;
  bool operator==(const Books&) const = default;

  int& counterOf(DocumentKind kind);
  void enter(const Document& document, LocalTime now);  // a closed document
  void enterCancelled();
  const ZRecord& closeDay(LocalTime now);
};

}  // namespace printer
