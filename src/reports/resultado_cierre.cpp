// Loading the figures of a closing from its answer.
#include "reports/resultado_cierre.h"

#include <algorithm>
#include <array>

#include "automation/conversions.h"
#include "automation/numbers.h"
#include "util/general.h"

namespace zentaro {

namespace {

using Loader = void (*)(ResultadoCierre&, const Variant&);

/// The amounts stand in decimal notation with a point; they are not scaled.
template <Currency ResultadoCierre::*property>
void amount(ResultadoCierre& record, const Variant& entry) {
  record.*property = Currency::fromDecimal(leadingDecimal(toText(entry)));
}

/// Filled up with blanks: what is too short is no date, even where its last two characters are a day.
std::u16string atLeast(std::size_t length, const Variant& entry) {
  std::u16string text = toText(entry);
  text.resize(std::max(text.size(), length), u' ');
  return text;
}

void reportDate(ResultadoCierre& record, const Variant& entry) {
  record.FechaReporte = General::MakeDateTime(atLeast(6, entry), u"0000");
}

/// Two characters each: minutes, hours, day, month, year.
void lastInvoice(ResultadoCierre& record, const Variant& entry) {
  const std::u16string text = atLeast(10, entry);
  const auto pair = [&](std::size_t position) { return text.substr(position, 2); };
  record.FechaUltimaFactura = General::MakeDateTime(pair(8) + pair(6) + pair(4), pair(2) + pair(0));
}

void lastNumber(ResultadoCierre& record, const Variant& entry) {
  record.numeroUltimaFactura = toInt32(entry);
}

constexpr int firstFigure = 3;
constexpr std::array<Loader, 19> loaders{
    amount<&ResultadoCierre::VentasExentas>,
    amount<&ResultadoCierre::BaseGravable1>,
    amount<&ResultadoCierre::Impuesto1>,
    amount<&ResultadoCierre::ValorDescuentos>,
    amount<&ResultadoCierre::ImpuestoDescuentos>,
    amount<&ResultadoCierre::MontoExentoNC>,
    amount<&ResultadoCierre::ValorNCBase1>,
    reportDate,
    amount<&ResultadoCierre::BaseGravable2>,
    amount<&ResultadoCierre::Impuesto2>,
    amount<&ResultadoCierre::BaseGravable3>,
    amount<&ResultadoCierre::Impuesto3>,
    amount<&ResultadoCierre::ImpuestoNCBase1>,
    amount<&ResultadoCierre::ValorNCBase2>,
    amount<&ResultadoCierre::ImpuestoNCBase2>,
    amount<&ResultadoCierre::ValorNCBase3>,
    amount<&ResultadoCierre::ImpuestoNCBase3>,
    lastInvoice,
    lastNumber,
};

}  // namespace

void ResultadoCierre::LoadFromParams(const Variant& v) {
  const Array& entries = v.array();
  int element = firstFigure;
  for (const Loader load : loaders) load(*this, entries.at(element++));
}

}  // namespace zentaro
