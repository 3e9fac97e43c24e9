// From a sale to the operations of the printer object.
#include "till/course/steps.h"

#include "base/terminal/language.h"

namespace zentaro::till {

using terminal::say;

namespace {

// Currency is exact where a double is not.
Variant money(Cents amount) { return Currency::fromScaled(amount * 100); }
Variant thousandths(Thousandths quantity) { return Currency::fromScaled(quantity * 10); }

/// A field of the last answer, for messages too.
std::string field(const CZentaro& printer, int index) { return utf8(toText(printer.response(index))); }

SaleStep openInvoice(const Sale& sale) {
  return {SaleStep::Kind::Open, say("abrir factura", "open invoice"),
          [&sale](CZentaro& z) { return z.IniciarFactura(sale.customerName, sale.customerRif); }};
}

SaleStep openCreditNote(const Sale& sale) {
  return {SaleStep::Kind::Open,
          say("abrir nota de crédito para la factura {}", "open credit note for invoice {}",
              {sale.invoice.number}),
          [&sale](CZentaro& z) {
            const Reference& invoice = sale.invoice;
            // Date and time together, because a time of midnight alone counts as none.
            const std::string moment = invoice.time.empty() ? "" : invoice.date + " " + invoice.time;
            return z.IniciarDevolucion(sale.customerName, sale.customerRif, invoice.number, invoice.serial,
                                       invoice.date.empty() ? Variant(0) : Variant(invoice.date),
                                       moment.empty() ? Variant(0) : Variant(moment));
          }};
}

SaleStep itemStep(const Item& item, bool isCreditNote) {
  const std::string label = say("renglón {}, {} x {}, impuesto {} %", "item {}, {} x {}, tax {} %",
                                {item.description, shortDecimalText(item.quantity, 3), centsText(item.price),
                                 shortDecimalText(item.tax, 2)});
  return {SaleStep::Kind::Middle, label, [&item, isCreditNote](CZentaro& z) {
            // Constants, so that the folding of a fractional quantity is not written back.
            const Variant price = money(item.price), quantity = thousandths(item.quantity),
                          tax = money(item.tax);
            return isCreditNote ? z.PasarLineaDevolucion(item.description, price, quantity, tax)
                                : z.PasarLineaFactura(item.description, price, quantity, tax);
          }};
}

SaleStep textStep(const std::string& text) {
  return {SaleStep::Kind::Middle, say("texto {}", "text {}", {text}),
          [&text](CZentaro& z) { return z.PasarLineaExtra(text); }};
}

SaleStep lineStep(const Line& line, bool isCreditNote) {
  if (const Item* item = std::get_if<Item>(&line)) return itemStep(*item, isCreditNote);
  return textStep(std::get<std::string>(line));
}

SaleStep discountStep(const Discount& discount) {
  return {SaleStep::Kind::Middle, say("descuento {}", "discount {}", {centsText(discount.amount)}),
          [&discount](CZentaro& z) {
            return discount.description.empty()
                       ? z.RegistrarDescuento(money(discount.amount))
                       : z.RegistrarDescuentoExt(money(discount.amount), discount.description);
          }};
}

std::string compareSubtotal(const CZentaro& printer, const Totals& totals) {
  const std::string printed = field(printer, 3);
  if (printed == std::to_string(totals.total())) return {};
  const DecimalReading cents = readDecimal(printed, 0);
  return say(
      "el total de la impresora es {}, el del archivo {}", "the printer's total is {}, the file's is {}",
      {cents.problem.empty() ? centsText(cents.value) : "\"" + printed + "\"", centsText(totals.total())});
}

SaleStep subtotalStep(const Totals& totals) {
  return {SaleStep::Kind::Middle,
          say("subtotal {} (impuesto {})", "subtotal {} (tax {})",
              {centsText(totals.total()), centsText(totals.tax)}),
          [](CZentaro& z) { return z.Subtotal(); },
          [totals](const CZentaro& z) { return compareSubtotal(z, totals); }};
}

SaleStep paymentStep(const Payment& payment) {
  const std::string label = say("pago {}", "payment {}", {centsText(payment.amount)});
  if (payment.medium.empty())
    return {SaleStep::Kind::Middle, label,
            [&payment](CZentaro& z) { return z.RecibirPago(money(payment.amount)); }};
  return {SaleStep::Kind::Middle, label + say(" con {}", " by {}", {payment.medium}),
          [&payment](CZentaro& z) { return z.PagoConMedio(payment.medium, money(payment.amount)); }};
}

SaleStep closeStep(std::string_view label, const std::string& type, Cents igtfBase) {
  return {SaleStep::Kind::Close, std::string(label), [type, igtfBase](CZentaro& z) {
            if (igtfBase == 0) return z.CerrarComprobante(type);
            return toInt16(z.CerrarComprobanteIGTF(Variant(type), money(igtfBase)));
          }};
}

}  // namespace

std::vector<SaleStep> stepsOf(const Sale& sale, const Totals& totals) {
  std::vector<SaleStep> steps{sale.isCreditNote ? openCreditNote(sale) : openInvoice(sale)};
  for (const Line& line : sale.lines) steps.push_back(lineStep(line, sale.isCreditNote));
  for (const Discount& discount : sale.discounts) steps.push_back(discountStep(discount));
  steps.push_back(subtotalStep(totals));
  for (const Payment& payment : sale.payments) steps.push_back(paymentStep(payment));
  if (sale.extraLines.empty()) {
    steps.push_back(closeStep(say("cerrar", "close"), "T", sale.igtf.base));
    return steps;
  }
  steps.push_back(closeStep(say("cierre parcial", "partial close"), "A", sale.igtf.base));
  for (const std::string& text : sale.extraLines) steps.push_back(textStep(text));
  steps.push_back(closeStep(say("cerrar", "close"), "E", 0));
  return steps;
}

}  // namespace zentaro::till
