// The status words and the answers to status requests. The bits are this printer's own choice.
#pragma once

#include <string>
#include <vector>

#include "virtual-printer/device/works.h"

namespace virtual_printer {

namespace printer_bit {
inline constexpr std::uint16_t coverOpen = 0x0004, paperNearEnd = 0x0010, paperOut = 0x0020, slipOn = 0x0100;
}
namespace fiscal_bit {
inline constexpr std::uint16_t invoiceOpen = 0x0001, creditNoteOpen = 0x0002, nonFiscalOpen = 0x0004,
                               partiallyClosed = 0x0008, paying = 0x0010, dayOpen = 0x0020,
                               memoryNearFull = 0x0040, memoryFull = 0x0080, closingRequired = 0x0100,
                               refused = 0x8000;
}

std::uint16_t printerStatus(const Works& works);
std::uint16_t fiscalStatus(const Works& works);

/// 0 none, 1 invoice, 2 credit note, 3 non-fiscal document, 4 partially closed
int documentStatus(const Machine& machine);

/// State word, status code, last command, date, time, the day's invoices and non-fiscal documents, last numbers.
std::vector<std::string> normalStatus(const Works& works);
/// Auxiliary status, document status, last numbers.
std::vector<std::string> counterStatus(const Works& works);

}  // namespace virtual_printer
