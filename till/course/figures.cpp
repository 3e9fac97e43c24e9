// One name for each figure.
#include "till/course/figures.h"

#include "base/files/json.h"
#include "till/document/decimal.h"

namespace zentaro::till {

namespace {

Json amount(Currency value) { return centsText(value.scaled() / 100); }

Json group(Currency exempt, Currency base1, Currency tax1, Currency base2, Currency tax2, Currency base3,
           Currency tax3) {
  return {{"exempt", amount(exempt)}, {"base1", amount(base1)}, {"tax1", amount(tax1)},
          {"base2", amount(base2)},   {"tax2", amount(tax2)},   {"base3", amount(base3)},
          {"tax3", amount(tax3)}};
}

}  // namespace

Json figuresJson(const ResultadoCierre& f) {
  return {{"sales", group(f.VentasExentas, f.BaseGravable1, f.Impuesto1, f.BaseGravable2, f.Impuesto2,
                          f.BaseGravable3, f.Impuesto3)},
          {"creditNotes", group(f.MontoExentoNC, f.ValorNCBase1, f.ImpuestoNCBase1, f.ValorNCBase2,
                                f.ImpuestoNCBase2, f.ValorNCBase3, f.ImpuestoNCBase3)},
          {"discounts", amount(f.ValorDescuentos)},
          {"discountTax", amount(f.ImpuestoDescuentos)},
          {"lastInvoice", f.numeroUltimaFactura}};
}

Json amountsJson(const Verdict& verdict) {
  return {{"total", centsText(verdict.total())},
          {"igtf", centsText(verdict.igtf())},
          {"change", centsText(verdict.change())}};
}

}  // namespace zentaro::till
