// The settings that a printer object reads once: each is kept as soon as it has a value other than 0.
#pragma once

#include <cstdint>

namespace zentaro {

class CachedSettings {
 public:
  /// "TimeOutZT": the answer time-out in seconds; 12 when the text is no number of 16 bits.
  std::int16_t timeOut();
  /// "LenDescripcionZT": the longest item description in characters; 20 for a number outside 16
  /// bits, 0 (not kept) for a text that does not begin with a number. A negative length is kept as
  /// it is and fails where it is used.
  std::int16_t descriptionLength();
  /// "SuprimirDecimalesEZT": fold a fractional quantity into the price. Decided at the first call.
  bool suppressesDecimals();

 private:
  enum class Suppression : std::int16_t { Unknown, On, Off };
  std::int16_t timeOut_ = 0;
  std::int16_t descriptionLength_ = 0;
  Suppression suppression_ = Suppression::Unknown;
};

}  // namespace zentaro
