// Invoices and credit notes: opening them, their item lines and extra lines, and the subtotal.
#include <cmath>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "automation/masks.h"
#include "documents/encoding.h"
#include "printer/czentaro.h"

namespace zentaro {

namespace {

constexpr std::int32_t nameLength = 40;
constexpr std::int32_t rifLength = 14;
// An extra line may be that much longer than a description.
constexpr std::int16_t extraLineLength = 14;

/// A date or time that equals 0 is an empty field.
std::u16string maskedOrEmpty(const Variant& value, std::u16string (*mask)(Date)) {
  return equalsZero(value) ? empty : mask(dateValue(value));
}

/// Currency times currency stays exact.
Variant product(const Variant& price, const Variant& quantity, double pieces) {
  if (price.is(Variant::Kind::Currency) && quantity.is(Variant::Kind::Currency)) {
    return price.currency() * quantity.currency();
  }
  const double total = toDouble(price) * pieces;
  if (!std::isfinite(total)) throw AutomationError(ErrorNumber::Overflow);
  return total;
}

/// Folds a fractional quantity into the price, both the caller's own.
void foldQuantity(Variant& price, Variant& quantity) {
  const double pieces = toDouble(quantity);
  if (std::floor(pieces) == pieces) return;
  price = product(price, quantity, pieces);
  quantity = std::int16_t{1};
}

}  // namespace

std::int16_t CZentaro::IniciarFactura(const Variant& sNombreCliente, const Variant& sRIFCliente) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return run(Command::OpenDocument, {CleanText(sNombreCliente, nameLength), CleanText(sRIFCliente, rifLength),
                                     empty, empty, empty, empty, empty, empty, empty});
}

std::int16_t CZentaro::IniciarDevolucion(const Variant& sNombreCliente, const Variant& sRIFCliente,
                                         const Variant& NumeroComprobante, const Variant& sSerialEquipo,
                                         const Variant& dtFechaComprobante,
                                         const Variant& dtHoraComprobante) {
  if (!isPortOpen) return ENVERR_DEVICE;
  // required: date and time are converted before the names, which stand in front of them in the frame.
  const std::u16string date = maskedOrEmpty(dtFechaComprobante, maskDate);
  const std::u16string time = maskedOrEmpty(dtHoraComprobante, maskTime);
  return run(Command::OpenDocument, {CleanText(sNombreCliente, nameLength), CleanText(sRIFCliente, rifLength),
                                     NumeroComprobante, sSerialEquipo, date, time, u"D", empty, empty});
}

std::u16string CZentaro::description(const Variant& text, std::int16_t extraLength) {
  const std::int32_t length = settings_.LenDescripcion() + extraLength;
  return CleanText(text, toInt16(length));  // required: the sum is one of 16 bits
}

std::int16_t CZentaro::PasarLineaItem(const Variant& text, Variant& price, Variant& quantity,
                                      const Variant& tax, const char16_t* lineType) {
  if (!isPortOpen) return ENVERR_DEVICE;
  // required: written back before anything is encoded, so it stands even if a conversion below fails.
  if (settings_.suppressesDecimals()) foldQuantity(price, quantity);
  return run(Command::ItemLine,
             {description(text, 0), implied(quantity, 3), implied(price, 2), implied(tax, 2), lineType});
}

std::int16_t CZentaro::PasarLineaFactura(const Variant& istrDescripcion, Variant& ivmPrecioNeto,
                                         Variant& idblCantidad, const Variant& ivmPorcentajeImpuesto) {
  return PasarLineaItem(istrDescripcion, ivmPrecioNeto, idblCantidad, ivmPorcentajeImpuesto, u"M");
}

std::int16_t CZentaro::PasarLineaFactura(const Variant& istrDescripcion, const Variant& ivmPrecioNeto,
                                         const Variant& idblCantidad, const Variant& ivmPorcentajeImpuesto) {
  Variant price = ivmPrecioNeto;
  Variant quantity = idblCantidad;
  return PasarLineaFactura(istrDescripcion, price, quantity, ivmPorcentajeImpuesto);
}

std::int16_t CZentaro::PasarLineaDevolucion(const Variant& istrDescripcion, Variant& ivmPrecioNeto,
                                            Variant& idblCantidad, const Variant& ivmPorcentajeImpuesto) {
  return PasarLineaItem(istrDescripcion, ivmPrecioNeto, idblCantidad, ivmPorcentajeImpuesto, u"m");
}

std::int16_t CZentaro::PasarLineaDevolucion(const Variant& istrDescripcion, const Variant& ivmPrecioNeto,
                                            const Variant& idblCantidad,
                                            const Variant& ivmPorcentajeImpuesto) {
  Variant price = ivmPrecioNeto;
  Variant quantity = idblCantidad;
  return PasarLineaDevolucion(istrDescripcion, price, quantity, ivmPorcentajeImpuesto);
}

std::int16_t CZentaro::PasarLineaExtra(const Variant& sTexto) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return run(Command::ExtraLine, {description(sTexto, extraLineLength), u"S"});
}

std::int16_t CZentaro::Subtotal() { return run(Command::Subtotal, {empty, empty}); }

}  // namespace zentaro
