// The settings that a printer object reads once: each is kept as soon as it has a value other than 0.
#pragma once

#include <cstdint>

#include "zentaro_api.h"

namespace zentaro {

/// "TimeOutZT" as it is now: the answer time-out in seconds; 12 when the text is no number of 16 bits.
ZENTARO_API std::int16_t readTimeOut();
/// "LenDescripcionZT" as it is now: the longest item description in characters; 20 for a number
/// outside 16 bits, 0 for a text that does not begin with a number.
ZENTARO_API std::int16_t readLenDescripcion();

class CachedSettings {
 public:
  std::int16_t TimeOut();
  /// A negative length is kept as it is and fails where it is used.
  std::int16_t LenDescripcion();
  /// "SuprimirDecimalesEZT": fold a fractional quantity into the price. Decided at the first call.
  bool suppressesDecimals();

 private:
  std::int16_t nTimeOutCache = 0;
  std::int16_t nLenDescripcionCache = 0;
  enum class Suppression : std::int16_t { Unknown, On, Off } nSuprimirDecimalesCache = Suppression::Unknown;
};

}  // namespace zentaro
