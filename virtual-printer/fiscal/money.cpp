// Rounding and sharing of amounts, and how amounts are written.
#include "virtual-printer/fiscal/money.h"

#include <limits>
#include <numeric>

namespace printer {
namespace {

__extension__ using Wide = __int128;

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
  return static_cast<Cents>((Wide{quantity} * price + 500) / 1000);
}

Cents percentage(Cents base, Rate rate) { return static_cast<Cents>((Wide{base} * rate + 5000) / 10'000); }

BySlot shareDiscount(const BySlot& bases, Cents discount) {
  BySlot shares{};
  BySlot remainders{};
  const Cents total = sum(bases);
  if (total == 0) return shares;
  for (std::size_t slot = 0; slot < slots; ++slot) {
    const Wide product = Wide{bases[slot]} * discount;
    shares[slot] = static_cast<Cents>(product / total);
    remainders[slot] = static_cast<Cents>(product % total);
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

}  // namespace printer
