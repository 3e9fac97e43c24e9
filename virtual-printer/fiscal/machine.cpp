// Checks first, changes after: each operation refuses before it touches anything.
#include "virtual-printer/fiscal/machine.h"

namespace virtual_printer {

void Machine::requireIdle() const { refuseIf(phase_ != Phase::None, Refusal::DocumentOpen); }

void Machine::requireFiscal() const {
  refuseIf(phase_ == Phase::None, Refusal::NoDocument);
  refuseIf(document_.kind == DocumentKind::NonFiscal, Refusal::DocumentOpen);
}

void Machine::requireTextLine() const { requireFiscal(); }

void Machine::requireSubtotal() const {
  requireFiscal();
  refuseIf(phase_ == Phase::Partial, Refusal::PartiallyClosed);
}

void Machine::requireNonFiscal() const {
  refuseIf(phase_ == Phase::None, Refusal::NoDocument);
  refuseIf(document_.kind != DocumentKind::NonFiscal, Refusal::DocumentOpen);
}

void Machine::open(DocumentKind kind, const Buyer& buyer, const Reference& reference) {
  requireIdle();
  refuseIf(!books_.hasRoomFor(kind), Refusal::CounterAtLimit);
  document_ = Document{};
  document_.kind = kind;
  document_.number = ++books_.counterOf(kind);
  document_.buyer = buyer;
  document_.reference = reference;
  document_.rates = books_.day.rates;
  books_.open = OpenMark{kind, document_.number};
  phase_ = Phase::Items;
}

Item Machine::addItem(DocumentKind kind, const std::string& description, Thousandths quantity, Cents price,
                      Rate rate) {
  requireSubtotal();
  refuseIf(kind != document_.kind, Refusal::WrongLineType);
  refuseIf(phase_ == Phase::Paying, Refusal::PaymentStarted);
  refuseIf(quantity < 1 || quantity > largestQuantity || price < 0 || price > largestPrice,
           Refusal::AmountOutOfRange);
  const Cents amount = lineAmount(quantity, price);
  refuseIf(document_.net() + amount > largestAmount, Refusal::AmountOutOfRange);
  RateTable rates = document_.rates;
  const auto slot = rates.place(rate);
  refuseIf(!slot, Refusal::FourthRate);
  document_.rates = rates;
  document_.lines[*slot] += amount;
  ++document_.itemCount;
  return {description, quantity, price, amount, *slot};
}

void Machine::discount(Cents amount) {
  requireSubtotal();
  refuseIf(phase_ == Phase::Paying, Refusal::PaymentStarted);
  refuseIf(document_.itemCount == 0, Refusal::NoItems);
  refuseIf(amount < 1, Refusal::AmountOutOfRange);
  refuseIf(amount > document_.net(), Refusal::DiscountTooLarge);
  const BySlot shares = shareDiscount(document_.bases(), amount);
  for (std::size_t slot = 0; slot < slots; ++slot) document_.discounts[slot] += shares[slot];
}

void Machine::pay(Cents amount) {
  requireSubtotal();
  refuseIf(document_.kind == DocumentKind::CreditNote, Refusal::NoPaymentOnCreditNote);
  refuseIf(document_.itemCount == 0, Refusal::NoItems);
  refuseIf(amount < 1 || amount > largestAmount, Refusal::AmountOutOfRange);
  const Cents total = document_.total();
  refuseIf(document_.paid >= total + percentage(total, igtfRate_), Refusal::AlreadyPaid);
  document_.paid += amount;
  phase_ = Phase::Paying;
}

void Machine::settle(Cents igtfBase) {
  refuseIf(document_.itemCount == 0, Refusal::NoItems);
  refuseIf(igtfBase < 0 || igtfBase > document_.total(), Refusal::BadIgtfBase);
  const Cents igtf = percentage(igtfBase, igtfRate_);
  refuseIf(document_.kind == DocumentKind::Invoice && document_.paid < document_.total() + igtf,
           Refusal::NotPaid);
  document_.igtfBase = igtfBase;
  document_.igtf = igtf;
}

void Machine::close(Closing type, Cents igtfBase, LocalTime now) {
  requireFiscal();
  if (phase_ == Phase::Partial) {
    refuseIf(type != Closing::Definitive, Refusal::PartiallyClosed);
    refuseIf(igtfBase != 0, Refusal::BadIgtfBase);
  } else {
    settle(igtfBase);
  }
  if (type == Closing::Partial) {
    phase_ = Phase::Partial;
    return;
  }
  books_.enter(document_, now);
  phase_ = Phase::None;
}

void Machine::closeNonFiscal(LocalTime now) {
  requireNonFiscal();
  books_.enter(document_, now);
  phase_ = Phase::None;
}

void Machine::cancel() {
  refuseIf(phase_ == Phase::None, Refusal::NoDocument);
  refuseIf(phase_ == Phase::Partial, Refusal::PartiallyClosed);
  abandon();
}

bool Machine::abandon() {
  if (!books_.open) return false;
  document_.kind = books_.open->kind;
  document_.number = books_.open->number;
  books_.enterCancelled();
  phase_ = Phase::None;
  return true;
}

}  // namespace virtual_printer
