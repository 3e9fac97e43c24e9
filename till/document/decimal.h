// Exact decimal numbers: amounts are whole cents, quantities whole thousandths, rates hundredths of a per cent.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "zentaro_api.h"

namespace zentaro::till {

using Cents = std::int64_t;
using Thousandths = std::int64_t;
using Rate = std::int64_t;  // 16 % is 1600

struct DecimalReading {
  std::int64_t value = 0;  // times ten to the power of the decimals
  std::string problem;     // what is wrong with the text, and what to write instead; empty when it was read
};

/// Reads digits with at most `decimals` of them behind a point. Nothing is rounded: a number that does not
/// fit is a problem.
DecimalReading readDecimal(std::string_view text, int decimals);

/// The number with all its decimals: 1250 with 2 is "12.50".
ZENTARO_API std::string decimalText(std::int64_t value, int decimals);
/// The same without zeros at the end: 2000 with 3 is "2".
std::string shortDecimalText(std::int64_t value, int decimals);

/// a x b / c, exact however large a x b is. a and b are not negative, and the quotient fits.
struct Quotient {
  std::int64_t whole = 0, remainder = 0;
};
Quotient multiplyDivide(std::int64_t a, std::int64_t b, std::int64_t c);
std::int64_t roundedHalfUp(std::int64_t a, std::int64_t b, std::int64_t c);

inline std::string centsText(Cents amount) { return decimalText(amount, 2); }

}  // namespace zentaro::till
