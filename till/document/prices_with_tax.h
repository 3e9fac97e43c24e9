// Prices with tax, made into the prices without tax that the printer takes:
//
//   net price     price x 100 / (100 + tax), rounded half up to a cent
//   net discount  in the proportion of net to total that the document has before it, rounded half up to a cent
//
// What is printed may differ by the roundings from what the prices add up to; reckon() compares the two.
#pragma once

#include "till/document/sale.h"

namespace zentaro::till {

/// Takes a sale whose members are each in order, its prices and discounts with tax.
void takeTaxOff(Sale& sale);

}  // namespace zentaro::till
