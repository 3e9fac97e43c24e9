// What the printer remembers: counters, the totals of the day, the Z records of its fiscal memory, the texts
// that the owner programmed, and the document that is open. All of it lives in the state file.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "virtual-printer/fiscal/day.h"

namespace virtual_printer {

// Where counting ends: numbers have eight digits on paper, and a day's sums must not leave 64 bits.
inline constexpr int largestNumber = 99'999'999;
inline constexpr Cents largestTotal = 1'000'000'000'000'000'000;

struct Counters {
  int invoice = 0, creditNote = 0, nonFiscal = 0, z = 0;  // the last numbers given out
  bool operator==(const Counters&) const = default;
};

struct OpenMark {
  DocumentKind kind = DocumentKind::Invoice;
  int number = 0;
  bool operator==(const OpenMark&) const = default;
};

inline constexpr std::size_t textLines = 5;
using TextLines = std::array<std::string, textLines>;

/// What a command may change. It is copied and compared with every command; the Z records, which may be many, are
/// only ever added to.
struct Account {
  Counters counters;
  DayTotals day;
  LastInvoice lastInvoice;
  TextLines header, footer;
  std::chrono::seconds clockOffset{0};
  std::optional<OpenMark> open;
  bool operator==(const Account&) const = default;
};

struct Books : Account {
  std::vector<ZRecord> zRecords;
  bool operator==(const Books&) const = default;

  int& counterOf(DocumentKind kind);
  /// Whether the numbers and the day's totals have room for one more document.
  bool hasRoomFor(DocumentKind kind);
  void enter(const Document& document, LocalTime now);  // a closed document
  void enterCancelled();
  const ZRecord& closeDay(LocalTime now);
};

}  // namespace virtual_printer
