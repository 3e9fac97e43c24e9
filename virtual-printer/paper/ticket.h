// What stands on the paper of a fiscal or non-fiscal document, part by part, in the order of printing.
#pragma once

#include "virtual-printer/fiscal/books.h"
#include "virtual-printer/paper/sheet.h"

namespace virtual_printer {

/// Who owns the machine; burnt into it, so no command changes it.
struct Owner {
  std::string rif;
  std::string name;
  std::string serial;
};

Lines headingLines(const Owner& owner, const TextLines& header);
Lines openingLines(const Document& document, LocalTime now);
Lines itemLines(const Item& item);
Lines discountLines(const std::string& description, Cents amount);
Lines subtotalLines(const Document& document);
Lines totalLines(const Document& document);  // bases, taxes and total; before the first payment
Lines paymentLines(const std::string& medium, Cents amount);
Lines settlementLines(const Document& document, Rate igtfRate);  // IGTF and change
Lines closingLines(const Owner& owner, const TextLines& footer);
Lines cancelledLines(const Owner& owner);
Lines nonFiscalClosingLines(const Owner& owner);
/// Printed after a restart, when the document's own paper is gone.
Lines lostDocumentLines(DocumentKind kind, int number, LocalTime now);

/// Shared with the reports.
std::string bolivares(Cents amount);
std::string rateLabel(const RateTable& rates, std::size_t slot);  // G (16,00%)
void addMachine(Lines& lines, const Owner& owner);

std::string documentTitle(DocumentKind kind, int number);
std::string eightDigits(int number);
std::string paperDate(LocalTime time);  // 24-11-2026
std::string paperTime(LocalTime time);  // 15:04

}  // namespace virtual_printer
