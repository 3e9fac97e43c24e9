// Checks first, changes after: each operation refuses before it touches anything.
#include "fiscal/machine.h"

namespace printer {

void Machine::requireIdle() const { refuseIf(phase_ != Phase::none, Refusal::documentOpen); }

void Machine::requireFiscal() const {
  refuseIf(phase_ == Phase::none, Refusal::noDocument);
  refuseIf(document_.kind == DocumentKind::nonFiscal, Refusal::documentOpen);
}

void Machine::requireTextLine() const { requireFiscal(); }

void Machine::requireSubtotal() const {
  requireFiscal();
  refuseIf(phase_ == Phase::partial, Refusal::partiallyClosed);
}

void Machine::requireNonFiscal() const {
  refuseIf(phase_ == Phase::none, Refusal::noDocument);
  refuseIf(document_.kind != DocumentKind::nonFiscal, Refusal::documentOpen);
}

void Machine::open(DocumentKind kind, const Buyer& buyer, const Reference& reference) {
  requireIdle();
  refuseIf(!books_.hasRoomFor(kind), Refusal::counterAtLimit);
  document_ = Document{};
  document_.kind = kind;
  document_.number = ++books_.counterOf(kind);
  document_.buyer = buyer;
  document_.reference = reference;
  document_.rates = books_.day.rates;
  books_.open = OpenMark{kind, document_.number};
  phase_ = Phase::items;
}

Item Machine::addItem(DocumentKind kind, const std::string& description, Thousandths quantity, Cents price,
                      Rate rate) {
  requireSubtotal();
  refuseIf(kind != document_.kind, Refusal::wrongLineType);
  refuseIf(phase_ == Phase::paying, Refusal::paymentStarted);
  refuseIf(quantity < 1 || quantity > largestQuantity || price < 0 || price > largestPrice,
           Refusal::amountOutOfRange);
  const Cents amount = lineAmount(quantity, price);
  refuseIf(document_.net() + amount > largestAmount, Refusal::amountOutOfRange);
  RateTable rates = document_.rates;
  const auto slot = rates.place(rate);
  refuseIf(!slot, Refusal::fourthRate);
  document_.rates = rates;
  document_.lines[*slot] += amount;
  ++document_.itemCount;
  return {description, quantity, price, amount, *slot};
}

void Machine::discount(Cents amount) {
  requireSubtotal();
  refuseIf(phase_ == Phase::paying, Refusal::paymentStarted);
  refuseIf(document_.itemCount == 0, Refusal::noItems);
  refuseIf(amount < 1, Refusal::amountOutOfRange);
  refuseIf(amount > document_.net(), Refusal::discountTooLarge);
  const BySlot shares = shareDiscount(document_.bases(), amount);
  for (std::size_t slot = 0; slot < slots; ++slot) document_.discounts[slot] += shares[slot];
}

void Machine::pay(Cents amount) {
  requireSubtotal();
  refuseIf(document_.kind == DocumentKind::creditNote, Refusal::noPaymentOnCreditNote);
  refuseIf(document_.itemCount == 0, Refusal::noItems);
  refuseIf(amount < 1 || amount > largestAmount, Refusal::amountOutOfRange);
  const Cents total = document_.total();
  refuseIf(document_.paid >= total + percentage(total, igtfRate_), Refusal::alreadyPaid);
  document_.paid += amount;
  phase_ = Phase::paying;
}

void Machine::settle(Cents igtfBase) {
  refuseIf(document_.itemCount == 0, Refusal::noItems);
  refuseIf(igtfBase < 0 || igtfBase > document_.total(), Refusal::badIgtfBase);
  const Cents igtf = percentage(igtfBase, igtfRate_);
  refuseIf(document_.kind == DocumentKind::invoice && document_.paid < document_.total() + igtf,
           Refusal::notPaid);
  document_.igtfBase = igtfBase;
  document_.igtf = igtf;
}

void Machine::close(Closing type, Cents igtfBase, LocalTime now) {
  requireFiscal();
  if (phase_ == Phase::partial) {
    refuseIf(type != Closing::definitive, Refusal::partiallyClosed);
    refuseIf(igtfBase != 0, Refusal::badIgtfBase);
  } else {
    settle(igtfBase);
  }
  if (type == Closing::partial) {
    phase_ = Phase::partial;
    return;
  }
  books_.enter(document_, now);
  phase_ = Phase::none;
}

void Machine::closeNonFiscal(LocalTime now) {
  requireNonFiscal();
  books_.enter(document_, now);
  phase_ = Phase::none;
}

void Machine::cancel() {
  refuseIf(phase_ == Phase::none, Refusal::noDocument);
  refuseIf(phase_ == Phase::partial, Refusal::partiallyClosed);
  abandon();
}

bool Machine::abandon() {
  if (!books_.open) return false;
  document_.kind = books_.open->kind;
  document_.number = books_.open->number;
  books_.enterCancelled();
  phase_ = Phase::none;
  return true;
}

}  // namespace printer
