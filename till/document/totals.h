// What a document adds up to, by the rule of the printer:
//
//   line amount   quantity x net price, rounded half up to a cent
//   base          the line amounts of one tax rate, less that rate's share of every discount
//   share         in proportion to the bases as they are, rounded down; the cents left over go one each to
//                 the largest remainders, among equal ones to the exempt base first, then in the order of
//                 the rates' places
//   tax           base x rate, once per rate, rounded half up to a cent
//   total         all bases and all taxes; the IGTF, its base x its rate rounded half up, comes on top
//
// The rates 16, 8 and 31 % take the first, second and third place while these are free, other rates the first
// free one. When the day's earlier documents have taken places in another order, two equal remainders may
// give another cent than the printer's: the comparison with its subtotal finds that before anything is paid.
#pragma once

#include <array>
#include <optional>

#include "till/document/group_reader.h"
#include "till/document/sale.h"

namespace zentaro::till {

struct Totals {
  Cents net = 0, tax = 0, igtf = 0;
  Cents paid = 0;
  Cents total() const { return net + tax; }
  Cents due() const { return total() + igtf; }
  Cents change() const { return paid > due() ? paid - due() : 0; }
};

/// Price x quantity, rounded half up to a cent.
Cents amountOf(const Item& item);

/// Takes a sale whose members are each in order. Notes what does not fit together: a fourth rate, a discount
/// above the net amount, an IGTF base above the total, payments that are too small or too many; a total that is
/// not the file's own, or further from the sum of its prices with tax than a cent for each line and discount.
Totals reckon(const Sale& sale, Problems& problems);

/// Prices with tax that whole cents without it do not meet to the cent.
std::optional<Problem> sumWarning(const Sale& sale, const Totals& totals);

}  // namespace zentaro::till
