// The fiscal state machine: which operation is allowed when, and what it does to the document and the books.
// Every operation either throws Refused and has changed nothing, or has succeeded.
//
//   none --open--> items --pay--> paying --partial close--> partial --close E--> none
//                    |  \--partial close-----------------/               (cancel: items or paying --> none)
//   none --open non-fiscal--> items --close non-fiscal--> none
#pragma once

#include "fiscal/books.h"
#include "fiscal/refusal.h"

namespace printer {

enum class Phase { none, items, paying, partial };
enum class Closing { total, partial, definitive };

class Machine {
 public:
  Machine(Books& books, Rate igtfRate) : books_{books}, igtfRate_{igtfRate} {}

  Phase phase() const { return phase_; }
  const Document& document() const { return document_; }
  Rate igtfRate() const { return igtfRate_; }

  void open(DocumentKind kind, const Buyer& buyer = {}, const Reference& reference = {});
  Item addItem(DocumentKind kind, const std::string& description, Thousandths quantity, Cents price,
               Rate rate);
  void requireTextLine() const;
  void requireSubtotal() const;
  void discount(Cents amount);
  void pay(Cents amount);
  void close(Closing type, Cents igtfBase, LocalTime now);
  void requireNonFiscal() const;
  void closeNonFiscal(LocalTime now);
  void cancel();
  // What is open ends as cancelled, in whatever phase; false when nothing is open.
  bool abandon();
  void requireIdle() const;

 private:
  void requireFiscal() const;
  void settle(Cents igtfBase);

  Books& books_;
  Rate igtfRate_;
  Phase phase_ = Phase::none;
  Document document_;
};

}  // namespace printer
