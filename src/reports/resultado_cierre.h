// ResultadoCierre: the figures of a fiscal closing. A plain record of the caller's; later commands
// do not change it.
#pragma once

#include <cstdint>

#include "automation/variant.h"

namespace zentaro {

class ZENTARO_API ResultadoCierre {
 public:
  Currency VentasExentas;  // exempt sales
  Currency BaseGravable1;  // taxable base and tax of rate 1
  Currency Impuesto1;
  Currency ValorDescuentos;  // discounts and their tax
  Currency ImpuestoDescuentos;
  Currency MontoExentoNC;  // credit notes: exempt amount
  Currency ValorNCBase1;   // credit notes: base of rate 1
  Date FechaReporte;       // day of the report, 00:00
  Currency BaseGravable2;
  Currency Impuesto2;
  Currency BaseGravable3;
  Currency Impuesto3;
  Currency ImpuestoNCBase1;
  Currency ValorNCBase2;
  Currency ImpuestoNCBase2;
  Currency ValorNCBase3;
  Currency ImpuestoNCBase3;
  Date FechaUltimaFactura;  // date and time of the last invoice, to the minute
  std::int32_t numeroUltimaFactura = 0;

  /// Loads every property from the elements 3 to 21 of an array of answer fields. Raises 13 when
  /// `v` is no array or an element does not convert, 9 when one is missing, 6 for an amount outside
  /// the currency range or a number outside 32 bits; what was loaded before the failing element
  /// stays.
  void LoadFromParams(const Variant& v);
};

}  // namespace zentaro
