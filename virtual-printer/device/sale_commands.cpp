// Invoices and credit notes: opening, lines, payments and closing.
#include "virtual-printer/device/commands.h"

namespace virtual_printer {
namespace {

Fields balance(const Document& document) {
  return {std::to_string(document.unpaid()), std::to_string(document.change())};
}

// Bases and taxes are printed once, before the first payment or at the close.
void printTotalsOnce(Works& works, Phase before) {
  if (before == Phase::Items) works.job.print(totalLines(works.machine.document()));
}

Fields takePayment(Works& works, const std::string& medium, Cents amount) {
  const Phase before = works.machine.phase();
  works.machine.pay(amount);
  printTotalsOnce(works, before);
  works.job.print(paymentLines(medium, amount));
  return balance(works.machine.document());
}

Fields takeDiscount(Works& works, const std::string& description, Cents amount) {
  works.machine.discount(amount);
  works.job.print(discountLines(description, amount));
  return balance(works.machine.document());
}

Fields cancelDocument(Works& works) {
  works.machine.cancel();
  const Document& document = works.machine.document();
  works.finishTicket(cancelledLines(works.identity.owner),
                     documentTitle(document.kind, document.number) + " ANULADO");
  return {eightDigits(document.number)};
}

struct CloseOrder {
  Closing type;
  Cents igtfBase;
};

// T and A have no IGTF base, U and B must have one, E may.
CloseOrder readCloseOrder(const Arguments& arguments) {
  const std::string letter = arguments.raw(0);
  const Cents base = arguments.raw(1).empty() ? 0 : arguments.amount(1);
  const bool withoutBase = letter == "T" || letter == "A";
  const bool withBase = letter == "U" || letter == "B";
  refuseIf(!withoutBase && !withBase && letter != "E" && !letter.empty(), Refusal::BadCloseType);
  refuseIf((withoutBase && base != 0) || (withBase && base == 0), Refusal::BadIgtfBase);
  if (letter == "A" || letter == "B") return {Closing::Partial, base};
  return {letter == "E" ? Closing::Definitive : Closing::Total, base};
}

}  // namespace

Fields openDocument(Works& works, const Arguments& arguments) {
  const bool isCreditNote = arguments.raw(6) == "D";
  refuseIf(!isCreditNote && !arguments.raw(6).empty(), Refusal::BadField);
  refuseIf(works.conditions.memoryFull, Refusal::MemoryFull);
  refuseIf(works.conditions.closingRequired, Refusal::ClosingRequired);
  works.machine.open(isCreditNote ? DocumentKind::CreditNote : DocumentKind::Invoice,
                     {arguments.text(0), arguments.text(1)},
                     {arguments.text(2), arguments.text(3), arguments.text(4), arguments.text(5)});
  works.job.print(headingLines(works.identity.owner, works.books.header));
  works.job.print(openingLines(works.machine.document(), works.now));
  return {eightDigits(works.machine.document().number)};
}

Fields extraLine(Works& works, const Arguments& arguments) {
  works.machine.requireTextLine();
  Lines lines;
  addText(lines, arguments.text(0));
  works.job.print(lines);
  return {};
}

Fields itemLine(Works& works, const Arguments& arguments) {
  const std::string type = arguments.raw(4);
  refuseIf(type != "M" && type != "m", Refusal::BadField);
  const Item item =
      works.machine.addItem(type == "M" ? DocumentKind::Invoice : DocumentKind::CreditNote, arguments.text(0),
                            arguments.amount(1), arguments.amount(2), arguments.rate(3));
  works.job.print(itemLines(item));
  return {std::to_string(works.machine.document().total())};
}

Fields subtotal(Works& works, const Arguments&) {
  works.machine.requireSubtotal();
  const Document& document = works.machine.document();
  works.job.print(subtotalLines(document));
  return {std::to_string(document.total()), std::to_string(document.net()), std::to_string(document.tax()),
          std::to_string(document.paid), std::to_string(document.itemCount)};
}

Fields payment(Works& works, const Arguments& arguments) {
  const std::string type = arguments.raw(2);
  if (type == "T") return takePayment(works, arguments.text(0), arguments.amount(1));
  if (type == "D") return takeDiscount(works, arguments.text(0), arguments.amount(1));
  refuseIf(type != "C", Refusal::BadField);
  return cancelDocument(works);
}

Fields closeDocument(Works& works, const Arguments& arguments) {
  const CloseOrder order = readCloseOrder(arguments);
  const Phase before = works.machine.phase();
  works.machine.close(order.type, order.igtfBase, works.now);
  const Document& document = works.machine.document();
  if (before != Phase::Partial) {
    printTotalsOnce(works, before);
    works.job.print(settlementLines(document, works.identity.igtfRate));
  }
  if (works.machine.phase() == Phase::None)
    works.finishTicket(closingLines(works.identity.owner, works.books.footer),
                       documentTitle(document.kind, document.number));
  return {eightDigits(document.number), std::to_string(document.due()), std::to_string(document.change())};
}

}  // namespace virtual_printer
