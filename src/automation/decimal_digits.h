// A decimal number as its digits: what lies between a double or a currency and its text, where all
// rounding to a number of decimals happens.
#pragma once

#include <string>

namespace zentaro {

/// 0.d1d2d3... times ten to the power `exponent`.
struct DecimalDigits {
  bool negative = false;
  std::string digits;  // neither the first nor the last is a zero; empty for zero
  int exponent = 0;
};

/// A finite number to 15 significant digits.
DecimalDigits decimalDigits(double value);
/// A finite number by the fewest digits that no other number of its type has.
DecimalDigits ownDigits(double value);
DecimalDigits ownDigits(float value);
/// Any digits, leading and trailing zeros included.
DecimalDigits decimalDigits(bool negative, std::string digits, int exponent);

/// The nearest double; an infinity when the number is too large.
double decimalValue(const DecimalDigits& value);

enum class Ties { ToEven, AwayFromZero };

/// The digits of the whole number that `value` times ten to the power `decimals` rounds to, without
/// its sign; may be empty or begin with zeros.
std::string scaledDigits(const DecimalDigits& value, int decimals, Ties ties);

/// Rounds to `decimals` places, half away from zero, and gives the digits before and behind the
/// decimal separator ("1234" and "50"); the integer part is "0" at least.
struct FixedDigits {
  bool negative = false;  // false when everything was rounded away
  std::string integer, fraction;
};
FixedDigits fixedDigits(const DecimalDigits& value, int decimals);

}  // namespace zentaro
