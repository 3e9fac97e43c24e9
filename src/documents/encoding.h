// How the host's values become the field texts of a command.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "automation/variant.h"
#include "zentaro_api.h"

namespace zentaro {

/// Cut to `length` characters (0 means 20), then trimmed of blanks, then reduced to 7-bit
/// characters: the accents of the lower-case vowels and of N are dropped, a double quote becomes an
/// apostrophe, any other character above 127 a full stop. Raises 5 for a negative length, 94 or 13
/// for a value without a text form.
ZENTARO_API std::u16string CleanText(const Variant& value, std::int32_t length);

/// The value with that many implied decimals, halves rounded upward: 12.34 with 2 is "1234", -1.25
/// with 1 is "-12". Raises 6 for an infinite or undefined result.
std::u16string FormatImplied(double value, std::int16_t decimals);
/// The same for a host's value; raises as toDouble does.
std::u16string implied(const Variant& value, std::int16_t decimals);

/// A finite number, or a text that is one; nothing for every other value, Booleans and dates included.
std::optional<double> asNumber(const Variant& value);
/// A date, a text that is a date, or else a number or a text that is one; nothing for every other value.
std::optional<Date> asDate(const Variant& value);

/// Whether a value equals 0, as a number or as a date; a text that is neither raises 13.
bool equalsZero(const Variant& value);
/// The date in a value: a date, a day count, or a text that is one of them, tried in this order.
/// Raises 13 or 94 otherwise.
Date dateValue(const Variant& value);

/// The first characters of a text as they are. A value without a text form is left to fail in BuildOMB.
Variant firstCharacters(const Variant& value, std::size_t count);

inline constexpr char16_t empty[] = u"";  // an empty field

}  // namespace zentaro
