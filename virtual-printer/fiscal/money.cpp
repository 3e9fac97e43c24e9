// Rounding and sharing of amounts, and how amounts are written.
#include "virtual-printer/fiscal/money.h"

#include <limits>
#include <numeric>

namespace virtual_printer {
namespace {

struct Division {
  Cents quotient = 0, remainder = 0;
};

// one * other / divisor, bit by bit of the first: the product may leave 64 bits, and there is no wider number everywhere.
Division scaled(Cents one, Cents other, Cents divisor) {
  Division result;
  for (Cents bit = Cents{1} << 62; bit > 0; bit >>= 1) {
    const Cents sum = 2 * result.remainder + ((one & bit) != 0 ? other : 0);
    result = {2 * result.quotient + sum / divisor, sum % divisor};
  }
  return result;
}

Cents roundedHalfUp(Division division, Cents divisor) {
  return division.quotient + (2 * division.remainder >= divisor ? 1 : 0);
}

std::string padded(std::int64_t value, std::size_t width) {
  std::string digits = std::to_string(value);
  return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

std::string grouped(std::int64_t value) {
  std::string digits = std::to_string(value);
  for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, ".");
  return digits;
}

}  // namespace

Cents lineAmount(Thousandths quantity, Cents price) {
  return roundedHalfUp(scaled(quantity, price, 1000), 1000);
}

Cents percentage(Cents base, Rate rate) { return roundedHalfUp(scaled(base, rate, 10'000), 10'000); }

BySlot shareDiscount(const BySlot& bases, Cents discount) {
  BySlot shares{};
  BySlot remainders{};
  const Cents total = sum(bases);
  if (total == 0) return shares;
  for (std::size_t slot = 0; slot < slots; ++slot) {
    const Division share = scaled(bases[slot], discount, total);
    shares[slot] = share.quotient;
    remainders[slot] = share.remainder;
  }
  for (Cents left = discount - sum(shares); left > 0; --left) {
    std::size_t largest = 0;
    for (std::size_t slot = 1; slot < slots; ++slot)
      if (remainders[slot] > remainders[largest]) largest = slot;
    ++shares[largest];
    remainders[largest] = -1;
  }
  return shares;
}

Cents sum(const BySlot& amounts) { return std::accumulate(amounts.begin(), amounts.end(), Cents{0}); }

Cents plus(Cents one, Cents other) {
  Cents both = 0;
  return __builtin_add_overflow(one, other, &both) ? std::numeric_limits<Cents>::max() : both;
}

std::string plainDecimal(Cents amount) {
  const std::string sign = amount < 0 ? "-" : "";
  const Cents size = amount < 0 ? -amount : amount;
  return sign + std::to_string(size / 100) + "." + padded(size % 100, 2);
}

std::string paperDecimal(Cents amount) {
  const std::string sign = amount < 0 ? "-" : "";
  const Cents size = amount < 0 ? -amount : amount;
  return sign + grouped(size / 100) + "," + padded(size % 100, 2);
}

std::string paperQuantity(Thousandths quantity) {
  const std::string whole = grouped(quantity / 1000);
  return quantity % 1000 == 0 ? whole : whole + "," + padded(quantity % 1000, 3);
}

std::string paperRate(Rate rate) { return std::to_string(rate / 100) + "," + padded(rate % 100, 2) + "%"; }

}  // namespace virtual_printer
