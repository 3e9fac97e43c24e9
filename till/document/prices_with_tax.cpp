// The rule, amount by amount.
#include "till/document/prices_with_tax.h"

#include <utility>

#include "till/document/totals.h"

namespace zentaro::till {

void takeTaxOff(Sale& sale) {
  constexpr Rate whole = 10'000;
  constexpr Cents beyondAnyDocument = 100'000'000'000'000;
  Cents sum = 0;
  for (Line& line : sale.lines) {
    Item* item = std::get_if<Item>(&line);
    if (item == nullptr) continue;
    if (sum < beyondAnyDocument) sum += roundedHalfUp(item->quantity, item->price, 1000);
    item->price = roundedHalfUp(item->price, whole, whole + item->tax);
  }
  for (Discount& discount : std::exchange(sale.discounts, {})) {
    sum -= discount.amount;
    Problems later;  // they are found again, by whoever asks for the totals
    const Totals before = reckon(sale, later);
    if (before.net > 0) discount.amount = roundedHalfUp(discount.amount, before.net, before.total());
    sale.discounts.push_back(std::move(discount));
  }
  sale.sumWithTax = sum;
}

}  // namespace zentaro::till
