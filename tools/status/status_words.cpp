// Sentences for statuses.
#include "tools/status/status_words.h"

#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "virtual-printer/device/status.h"
#include "zentaro.h"

namespace zentaro::tools {

using terminal::say;

namespace {

std::string documentText(int document) {
  switch (document) {
    case 0: return say("ninguno abierto", "none open");
    case 1: return say("hay una factura abierta", "an invoice is open");
    case 2: return say("hay una nota de crédito abierta", "a credit note is open");
    case 3: return say("hay un documento no fiscal abierto", "a non-fiscal document is open");
    case 4: return say("hay un documento cerrado a medias", "a document is partially closed");
    default: return say("abierto (estado {})", "open (status {})", {std::to_string(document)});
  }
}

// Without known bits only the counters tell that something was printed; a credit note is in neither.
std::string dayText(const statusN& status, std::int32_t fiscalWord, Bits bits) {
  const int invoices = status.FacturasPeriodo(), others = status.DNFPeriodo();
  const bool isOpen = invoices + others > 0 ||
                      (bits == Bits::Known && (fiscalWord & virtual_printer::fiscal_bit::dayOpen) != 0);
  const std::string last = std::to_string(status.UltimoCierreZ());
  if (isOpen)
    return say("abierto; desde el Z {}: facturas {}, documentos no fiscales {}",
               "open; since Z {}: invoices {}, non-fiscal documents {}",
               {last, std::to_string(invoices), std::to_string(others)});
  if (bits == Bits::Known) return say("cerrado; último Z: {}", "closed; last Z: {}", {last});
  return say("sin facturas desde el Z {}", "no invoices since Z {}", {last});
}

std::string paperText(std::int32_t printerWord) {
  using namespace virtual_printer::printer_bit;
  const std::string paper = (printerWord & paperOut) != 0       ? say("no hay", "there is none")
                            : (printerWord & paperNearEnd) != 0 ? say("se está acabando", "near its end")
                                                                : say("hay", "there is some");
  return (printerWord & coverOpen) != 0 ? paper + say("; la tapa está abierta", "; the cover is open")
                                        : paper;
}

std::string row(std::string_view name, const std::string& value) {
  return terminal::padded(std::string(name), 13) + value + "\n";
}

}  // namespace

std::string statusInWords(const Object& normal, const Object& numeric, const CZentaro& printer, Bits bits) {
  const auto& status = *static_cast<const statusN*>(normal.instance());
  const int document = static_cast<const statusHASAR*>(numeric.instance())->statusDocumento;
  std::string words = row(say("Documento", "Document"), documentText(document)) +
                      row(say("Día fiscal", "Fiscal day"), dayText(status, printer.dwordStatusFiscal, bits));
  if (bits == Bits::Known) words += row(say("Papel", "Paper"), paperText(printer.dwordPrinterStatus));
  return words + "\n";
}

}  // namespace zentaro::tools
