// The fiscal state machine: which operation is allowed when, and what it does to the document and the books.
// Every operation either throws Refused and has changed nothing, or has succeeded.
//
//   none --open--> items --pay--> paying --partial close--> partial --close E--> none
//                    |  \--partial close-----------------/               (cancel: items or paying --> none)
//   none --open non-fiscal--> items --close non-fiscal--> none
#pragma once

#include "virtual-printer/fiscal/books.h"
#include "virtual-printer/fiscal/refusal.h"

namespace virtual_printer {

enum class Phase { None, Items, Paying, Partial };
enum class Closing { Total, Partial, Definitive };

/// How far the document in work has come.
struct Progress {
  Phase phase = Phase::None;
  Document document;
};

class Machine {
 public:
  Machine(Books& books, Rate igtfRate) : books_{books}, igtfRate_{igtfRate} {}
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  Phase phase() const { return progress_.phase; }
  const Document& document() const { return progress_.document; }
  const Progress& progress() const { return progress_; }
  /// Goes back to where the document stood before.
  void goBack(const Progress& before) { progress_ = before; }
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
  /// What is open ends as cancelled, in whatever phase; false when nothing is open.
  bool abandon();
  void requireIdle() const;

 private:
  void requireFiscal() const;
  void settle(Cents igtfBase);

  Books& books_;
  Rate igtfRate_;
  Progress progress_;
  Phase& phase_ = progress_.phase;
  Document& document_ = progress_.document;
};

}  // namespace virtual_printer
