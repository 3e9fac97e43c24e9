// A document as it grows: its lines, and what they add up to.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "virtual-printer/fiscal/money.h"

namespace virtual_printer {

enum class DocumentKind { Invoice, CreditNote, NonFiscal };

/// The up to three tax rates of one day, each with a place of its own from its first use to the Z closing.
/// 16, 8 and 31 % prefer the places of the general, reduced and additional rate.
struct RateTable {
  std::array<Rate, slots> rates{};  // [0] is the exempt one and stays 0; a 0 after it is a free place

  /// The place of a rate, given to it if it is new; none for a fourth rate.
  std::optional<std::size_t> place(Rate rate);
  bool operator==(const RateTable&) const = default;
};

// The letter after a description: E exempt, G general, R reduced, A additional.
inline constexpr std::array<char, slots> slotLetters{'E', 'G', 'R', 'A'};

struct Buyer {
  std::string name;
  std::string rif;
};

/// The invoice that a credit note takes back, as the host names it; any part may be empty.
struct Reference {
  std::string number;
  std::string serial;
  std::string date;
  std::string time;
};

struct Item {
  std::string description;
  Thousandths quantity = 0;
  Cents price = 0;
  Cents amount = 0;
  std::size_t slot = 0;
};

struct Document {
  DocumentKind kind = DocumentKind::Invoice;
  int number = 0;
  Buyer buyer;
  Reference reference;
  RateTable rates;
  int itemCount = 0;
  BySlot lines{};      // line amounts by rate
  BySlot discounts{};  // shares of the discounts by rate
  Cents paid = 0;
  Cents igtfBase = 0;
  Cents igtf = 0;

  BySlot bases() const;
  BySlot taxes() const;
  BySlot taxesOf(const BySlot& amounts) const;
  Cents net() const { return sum(bases()); }
  Cents tax() const { return sum(taxes()); }
  Cents total() const { return net() + tax(); }
  Cents due() const { return total() + igtf; }
  Cents unpaid() const { return due() > paid ? due() - paid : 0; }
  Cents change() const { return paid > due() ? paid - due() : 0; }
};

}  // namespace virtual_printer
