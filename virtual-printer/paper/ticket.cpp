// The look of a Venezuelan fiscal ticket.
#include "virtual-printer/paper/ticket.h"

#include "virtual-printer/fiscal/calendar.h"

namespace virtual_printer {
namespace {

std::string kindName(DocumentKind kind) {
  switch (kind) {
    case DocumentKind::CreditNote: return "NOTA DE CREDITO";
    case DocumentKind::NonFiscal: return "DOCUMENTO NO FISCAL";
    case DocumentKind::Invoice: break;
  }
  return "FACTURA";
}

std::string rateMark(std::size_t slot) { return std::string{" ("} + slotLetters[slot] + ")"; }

void addIfGiven(Lines& lines, const std::string& label, const std::string& text) {
  if (!text.empty()) addText(lines, label + text);
}

// "yymmdd" and "hhmmss" as the host sent them; anything else is shown as it came.
std::string sentDate(const std::string& text) {
  if (text.size() != 6) return text;
  return text.substr(4, 2) + "-" + text.substr(2, 2) + "-20" + text.substr(0, 2);
}

std::string sentTime(const std::string& text) {
  return text.size() == 6 ? text.substr(0, 2) + ":" + text.substr(2, 2) : text;
}

}  // namespace

std::string eightDigits(int number) {
  const std::string digits = std::to_string(number);
  return digits.size() < 8 ? std::string(8 - digits.size(), '0') + digits : digits;
}

std::string paperDate(LocalTime time) { return written(time, "%d-%m-%Y"); }

std::string paperTime(LocalTime time) { return written(time, "%H:%M"); }

std::string bolivares(Cents amount) { return "Bs " + paperDecimal(amount); }

std::string rateLabel(const RateTable& rates, std::size_t slot) {
  return std::string{slotLetters[slot]} + " (" + paperRate(rates.rates[slot]) + ")";
}

void addMachine(Lines& lines, const Owner& owner) {
  lines.emplace_back();
  addMiddle(lines, "MH  " + owner.serial, LineStyle::Bold);
}

std::string documentTitle(DocumentKind kind, int number) {
  return kindName(kind) + " " + eightDigits(number);
}

Lines headingLines(const Owner& owner, const TextLines& header) {
  Lines lines;
  addMiddle(lines, "SENIAT", LineStyle::Title);
  addMiddle(lines, "RIF " + owner.rif);
  addMiddle(lines, owner.name);
  for (const std::string& text : header)
    if (!text.empty()) addMiddle(lines, text);
  lines.emplace_back();
  return lines;
}

Lines openingLines(const Document& document, LocalTime now) {
  Lines lines;
  addIfGiven(lines, "RIF/C.I.: ", document.buyer.rif);
  addIfGiven(lines, "RAZON SOCIAL: ", document.buyer.name);
  const Reference& reference = document.reference;
  if (document.kind == DocumentKind::CreditNote && reference.number != "0")
    addIfGiven(lines, "FACTURA AFECTADA: ", reference.number);
  addIfGiven(lines, "SERIAL DEL EQUIPO: ", reference.serial);
  addIfGiven(lines, "FECHA FACTURA: ", sentDate(reference.date));
  addIfGiven(lines, "HORA FACTURA: ", sentTime(reference.time));
  addMiddle(lines, kindName(document.kind), LineStyle::Title);
  addPair(lines,
          document.kind == DocumentKind::Invoice ? "FACTURA:" : "NUMERO:", eightDigits(document.number));
  addPair(lines, "FECHA: " + paperDate(now), "HORA: " + paperTime(now));
  lines.push_back(ruleLine());
  return lines;
}

Lines itemLines(const Item& item) {
  Lines lines;
  addText(lines, paperQuantity(item.quantity) + " x " + bolivares(item.price));
  addPair(lines, item.description + rateMark(item.slot), bolivares(item.amount));
  return lines;
}

Lines discountLines(const std::string& description, Cents amount) {
  Lines lines;
  addPair(lines, description.empty() ? "DESCUENTO" : "DESCUENTO " + description, bolivares(-amount));
  return lines;
}

Lines subtotalLines(const Document& document) {
  Lines lines;
  addPair(lines, "TOTAL PARCIAL", bolivares(document.total()), LineStyle::Bold);
  return lines;
}

Lines totalLines(const Document& document) {
  Lines lines{ruleLine()};
  addPair(lines, "SUBTOTAL", bolivares(document.net()));
  lines.push_back(ruleLine());
  const BySlot bases = document.bases();
  const BySlot taxes = document.taxes();
  if (bases[0] != 0) addPair(lines, "EXENTO (E)", bolivares(bases[0]));
  for (std::size_t slot = 1; slot < slots; ++slot) {
    if (document.lines[slot] == 0) continue;
    addPair(lines, "BI " + rateLabel(document.rates, slot), bolivares(bases[slot]));
    addPair(lines, "IVA " + rateLabel(document.rates, slot), bolivares(taxes[slot]));
  }
  lines.push_back(ruleLine());
  addPair(lines, "TOTAL", bolivares(document.total()), LineStyle::Title);
  return lines;
}

Lines paymentLines(const std::string& medium, Cents amount) {
  const bool isNumber = !medium.empty() && medium.find_first_not_of("0123456789") == std::string::npos;
  Lines lines;
  addPair(lines, medium.empty() ? "EFECTIVO" : (isNumber ? "MEDIO DE PAGO " : "") + medium,
          bolivares(amount));
  return lines;
}

Lines settlementLines(const Document& document, Rate igtfRate) {
  Lines lines;
  if (document.igtf > 0) {
    addPair(lines, "BI IGTF (" + paperRate(igtfRate) + ")", bolivares(document.igtfBase));
    addPair(lines, "IGTF (" + paperRate(igtfRate) + ")", bolivares(document.igtf));
    addPair(lines, "TOTAL CON IGTF", bolivares(document.due()), LineStyle::Title);
  }
  if (document.change() > 0) addPair(lines, "CAMBIO", bolivares(document.change()));
  return lines;
}

Lines closingLines(const Owner& owner, const TextLines& footer) {
  Lines lines{{}};
  for (const std::string& text : footer)
    if (!text.empty()) addMiddle(lines, text);
  addMachine(lines, owner);
  return lines;
}

Lines cancelledLines(const Owner& owner) {
  Lines lines;
  addMiddle(lines, "DOCUMENTO ANULADO", LineStyle::Title);
  addMachine(lines, owner);
  return lines;
}

Lines nonFiscalClosingLines(const Owner& owner) {
  Lines lines;
  addMiddle(lines, "NO FISCAL", LineStyle::Bold);
  addMachine(lines, owner);
  return lines;
}

Lines lostDocumentLines(DocumentKind kind, int number, LocalTime now) {
  Lines lines;
  addPair(lines, kindName(kind) + ":", eightDigits(number));
  addPair(lines, "FECHA: " + paperDate(now), "HORA: " + paperTime(now));
  addMiddle(lines, "INTERRUMPIDO POR CORTE DE ENERGIA");
  return lines;
}

}  // namespace virtual_printer
