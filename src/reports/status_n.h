// statusN: the answer to the normal status request, kept as texts with typed accessors. A plain
// record of the caller's.
#pragma once

#include <cstdint>
#include <string>

#include "automation/variant.h"

namespace zentaro {

class ZENTARO_API statusN {
 public:
  std::u16string CodigoStatus;
  std::u16string UltimoComando;

  /// Loads all texts from the elements 4 to 12 of an array of answer fields. Raises 13 when
  /// `response` is no array, 9 when an element is missing; what was loaded before it stays.
  void LoadFromResponse(const Variant& response);

  /// The printer's clock, to the minute. Raises 13 when the texts form no date and time.
  Date FechaImpresora() const;
  // Counters. Each raises 13 for a text that is no number, 6 outside 32 bits; fractions are
  // rounded, ties to even.
  std::int32_t FacturasPeriodo() const;
  std::int32_t DNFPeriodo() const;
  std::int32_t NumeroFacturaAcumulado() const;
  std::int32_t NumeroDNFAcumulado() const;
  std::int32_t UltimoCierreZ() const;

 private:
  std::u16string sFecha, sHora, sFacturasPeriodo, sDNFPeriodo, sNumeroFacturaAcumulado, sNumeroDNFAcumulado,
      sUltimoCierreZ;
};

}  // namespace zentaro
