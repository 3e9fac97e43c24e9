// Numbers in texts: reading them, rounding them, and writing them with 15 significant digits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/decimal_digits.h"

namespace zentaro {

/// Rounds to a whole number, ties to even; raises 6 outside the type's range, also for NaN and infinities.
std::int16_t roundToInt16(double value);
std::int32_t roundToInt32(double value);

/// The whole text as a number, in the form that a user writes under the regional settings: blanks
/// around it, a sign, digits with group separators before exactly three of them, the decimal
/// separator, an exponent (E or D); or &H and &O with hexadecimal or octal digits, a signed number
/// of 16 bits where its value fits into them, else of 32; zeros in front do not count.
/// Nothing when the text is anything else or empty; an infinity when the number is too large for a
/// double.
std::optional<double> strictNumber(std::u16string_view text, char16_t decimalSeparator,
                                   char16_t groupSeparator);

/// The same with all its digits, for decimal numbers only (no &H, no &O).
std::optional<DecimalDigits> strictDecimal(std::u16string_view text, char16_t decimalSeparator,
                                           char16_t groupSeparator);

/// The number that the text begins with: blanks, tabs and line feeds are ignored wherever they
/// stand, the decimal point is "." and reading stops at the first character that cannot continue
/// the number. 0 when there is none.
DecimalDigits leadingDecimal(std::u16string_view text);
double leadingNumber(std::u16string_view text);

/// The unsigned number in the text's leading hexadecimal digits (either case); 0 when there are
/// none. Only the low 32 bits are kept of a longer one.
std::uint32_t leadingHex(std::u16string_view text);

/// The leading hexadecimal digits (blanks ignored) as a signed number: four digits or fewer are 16
/// bits wide, up to eight are 32 bits wide; raises 6 for more. Zeros in front do not count.
std::int32_t leadingSignedHex(std::u16string_view text);

/// At most 15 significant digits without trailing zeros: "0.1", "1E+15", "3.33333333333333E-02".
/// Fixed notation as long as the text needs no more than 15 digits on either side of the separator.
/// Minus zero is "0"; an infinity is "1.#INF" or "-1.#INF", a NaN "1.#QNAN".
std::u16string numberText(double value, char16_t decimalSeparator);
/// The same with the fewest digits that no other float has.
std::u16string numberText(float value, char16_t decimalSeparator);

}  // namespace zentaro
