// statusHASAR: status words and counters as numbers. A plain record of the caller's; a host can
// create one itself.
#pragma once

#include <cstdint>

#include "automation/variant.h"

namespace zentaro {

class ZENTARO_API statusHASAR {
 public:
  std::int32_t statusPrinter = 0;  // 0x8000 to 0xFFFF are negative here: -32768 to -1
  std::int32_t statusFiscal = 0;   // the same
  std::int32_t statusAuxiliar = 0;
  std::int32_t statusDocumento = 0;
  std::int32_t numeroUltimaFactura = 0;
  std::int32_t numeroUltimaND = 0;
  std::int32_t numeroUltimaNC = 0;
  std::int32_t numeroUltimoDNF = 0;

  /// Loads the fields from the elements 0 to 7 of an array: two hexadecimal numbers, then six
  /// decimal ones, each read from the start of the text (0 when there is none; ties to even).
  /// Raises 13 when `response` is no array, 9 when an element is missing, 6 outside 32 bits; what
  /// was loaded before it stays.
  void LoadFromResponse(const Variant& response);
};

}  // namespace zentaro
