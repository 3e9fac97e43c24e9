// The arithmetic of a fiscal document. Amounts are whole cents; nothing is ever a floating-point number.
//
//   line amount   quantity x net price, rounded half up to a cent
//   base          the line amounts of one tax rate, less that rate's share of every discount
//   discount      shared over the bases in proportion to them: each share rounded down, the cents left over
//                 go one each to the largest remainders, among equal ones to the exempt base first, then
//                 rate 1, 2, 3
//   tax           base x rate, once per rate and document, rounded half up to a cent
//   total         all bases plus all taxes
//   IGTF          base given at the close x IGTF rate, rounded half up to a cent, on top of the total
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace virtual_printer {

using Cents = std::int64_t;
using Thousandths = std::int64_t;  // quantities
using Rate = int;                  // hundredths of a percent: 16 % is 1600

// Amounts by tax: the exempt one, then those of the day's rates 1 to 3.
inline constexpr std::size_t slots = 4;
using BySlot = std::array<Cents, slots>;

// Limits of one document, chosen so that no intermediate result leaves 64 bits.
inline constexpr Thousandths largestQuantity = 999'999'999;
inline constexpr Cents largestPrice = 999'999'999'999;
inline constexpr Rate largestRate = 9999;
inline constexpr Cents largestAmount = 9'999'999'999'999;

Cents lineAmount(Thousandths quantity, Cents price);
Cents percentage(Cents base, Rate rate);

/// The share of each base in a discount of 0 to their sum.
BySlot shareDiscount(const BySlot& bases, Cents discount);

Cents sum(const BySlot& amounts);
/// Stays at the largest sum rather than running over: reports add up what a file says.
Cents plus(Cents one, Cents other);

std::string plainDecimal(Cents amount);           // 1234.56, as answers carry it
std::string paperDecimal(Cents amount);           // 1.234,56, as paper shows it
std::string paperQuantity(Thousandths quantity);  // 2, 0,525
std::string paperRate(Rate rate);                 // 16,00%

}  // namespace virtual_printer
