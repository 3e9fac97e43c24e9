// Sums of a document and the places of its tax rates.
#include "virtual-printer/fiscal/document.h"

#include <algorithm>

namespace virtual_printer {
namespace {

constexpr std::array<Rate, slots> preferredRates{0, 1600, 800, 3100};

}  // namespace

std::optional<std::size_t> RateTable::place(Rate rate) {
  const auto known = std::find(rates.begin(), rates.end(), rate);
  if (known != rates.end()) return static_cast<std::size_t>(known - rates.begin());
  std::optional<std::size_t> free;
  for (std::size_t slot = slots - 1; slot > 0; --slot)
    if (rates[slot] == 0) free = slot;
  for (std::size_t slot = 1; slot < slots; ++slot)
    if (rates[slot] == 0 && preferredRates[slot] == rate) free = slot;
  if (free) rates[*free] = rate;
  return free;
}

BySlot Document::bases() const {
  BySlot bases = lines;
  for (std::size_t slot = 0; slot < slots; ++slot) bases[slot] -= discounts[slot];
  return bases;
}

BySlot Document::taxesOf(const BySlot& amounts) const {
  BySlot taxes{};
  for (std::size_t slot = 1; slot < slots; ++slot) taxes[slot] = percentage(amounts[slot], rates.rates[slot]);
  return taxes;
}

BySlot Document::taxes() const { return taxesOf(bases()); }

}  // namespace virtual_printer
