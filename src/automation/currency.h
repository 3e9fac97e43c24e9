// The automation currency type: 64-bit fixed point with four decimals.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

#include "automation/decimal_digits.h"
#include "zentaro_api.h"

namespace zentaro {

class ZENTARO_API Currency {
 public:
  constexpr Currency() = default;
  /// `scaled` ten-thousandths.
  static constexpr Currency fromScaled(std::int64_t scaled) { return Currency(scaled); }
  /// Rounded to four decimals, ties to even; raises 6 (overflow) outside the 64-bit range, also for NaN.
  static Currency fromDouble(double value);

  /// Rounded to four decimals, ties to even, from all digits; raises 6 outside the 64-bit range.
  static Currency fromDecimal(const DecimalDigits& value);

  constexpr std::int64_t scaled() const { return scaled_; }
  double toDouble() const;
  DecimalDigits toDecimal() const;
  auto operator<=>(const Currency&) const = default;
  /// Exact, then rounded to four decimals, ties to even; raises 6 outside the 64-bit range.
  friend ZENTARO_API Currency operator*(Currency left, Currency right);

 private:
  constexpr explicit Currency(std::int64_t scaled) : scaled_(scaled) {}
  std::int64_t scaled_ = 0;
};

/// The shortest decimal text, at most four decimals: "12.5", "-0.0001", "0".
std::u16string currencyText(Currency value, char16_t decimalSeparator);
/// Always four decimals with a point: "12.5000".
ZENTARO_API std::string currencyText4(Currency value);
/// The reverse, exact: a sign, digits, and up to four decimals behind a point. Raises 13 for
/// anything else, 6 outside the range.
ZENTARO_API Currency currencyFromText4(std::string_view text);

}  // namespace zentaro
