// Status words and status answers.
#include "virtual-printer/device/status.h"

#include "virtual-printer/fiscal/calendar.h"
#include "virtual-printer/wire/frame.h"

namespace virtual_printer {
namespace {

std::uint16_t bitIf(bool condition, std::uint16_t bit) { return condition ? bit : std::uint16_t{0}; }

}  // namespace

std::uint16_t printerStatus(const Works& works) {
  const Conditions& now = works.conditions;
  return static_cast<std::uint16_t>(
      bitIf(now.coverOpen, printer_bit::coverOpen) | bitIf(now.paperNearEnd, printer_bit::paperNearEnd) |
      bitIf(now.paperOut, printer_bit::paperOut) | bitIf(works.slipOn, printer_bit::slipOn));
}

std::uint16_t fiscalStatus(const Works& works) {
  const Phase phase = works.machine.phase();
  const auto isOpen = [&](DocumentKind kind) {
    return phase != Phase::None && works.machine.document().kind == kind;
  };
  const Conditions& now = works.conditions;
  return static_cast<std::uint16_t>(bitIf(isOpen(DocumentKind::Invoice), fiscal_bit::invoiceOpen) |
                                    bitIf(isOpen(DocumentKind::CreditNote), fiscal_bit::creditNoteOpen) |
                                    bitIf(isOpen(DocumentKind::NonFiscal), fiscal_bit::nonFiscalOpen) |
                                    bitIf(phase == Phase::Partial, fiscal_bit::partiallyClosed) |
                                    bitIf(phase == Phase::Paying, fiscal_bit::paying) |
                                    bitIf(works.books.day != DayTotals{}, fiscal_bit::dayOpen) |
                                    bitIf(now.memoryNearFull, fiscal_bit::memoryNearFull) |
                                    bitIf(now.memoryFull, fiscal_bit::memoryFull) |
                                    bitIf(now.closingRequired, fiscal_bit::closingRequired));
}

int documentStatus(const Machine& machine) {
  if (machine.phase() == Phase::None) return 0;
  return machine.phase() == Phase::Partial ? 4 : static_cast<int>(machine.document().kind) + 1;
}

std::vector<std::string> normalStatus(const Works& works) {
  const Counters& counters = works.books.counters;
  return {hexadecimal(fiscalStatus(works), 4),
          "0" + std::to_string(documentStatus(works.machine)),
          hexadecimal(works.lastCommand, 2),
          written(works.now, "%y%m%d"),
          written(works.now, "%H%M%S"),
          std::to_string(works.books.day.invoices),
          std::to_string(works.books.day.nonFiscals),
          std::to_string(counters.invoice),
          std::to_string(counters.nonFiscal),
          std::to_string(counters.z)};
}

std::vector<std::string> counterStatus(const Works& works) {
  const Counters& counters = works.books.counters;
  return {std::to_string(printerStatus(works)), std::to_string(documentStatus(works.machine)),
          std::to_string(counters.invoice),     "0",
          std::to_string(counters.creditNote),  std::to_string(counters.nonFiscal)};
}

}  // namespace virtual_printer
