// Payments, discounts, and the end of a fiscal document: cancelled, or closed with or without a
// base for the IGTF tax.
#include "automation/conversions.h"
#include "documents/encoding.h"
#include "printer/czentaro.h"

namespace zentaro {

namespace {

bool isText(const Variant& value, std::u16string_view text) {
  return value.is(Variant::Kind::Text) && value.text() == text;
}

/// "T" and "A" have the counterparts "U" and "B" for a close with a base; any other type stays as it is.
void adjustCloseType(Variant& type, bool hasBase) {
  struct Pair {
    const char16_t *without, *with;
  };
  for (const Pair pair : {Pair{u"T", u"U"}, Pair{u"A", u"B"}}) {
    if (isText(type, hasBase ? pair.without : pair.with)) {
      type = hasBase ? pair.with : pair.without;
      return;
    }
  }
}

}  // namespace

std::int16_t CZentaro::RecibirPago(const Variant& ivmMontoRecibido) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return run(Command::Payment, {empty, implied(ivmMontoRecibido, 2), u"T"});
}

std::int16_t CZentaro::PagoConMedio(const Variant& medio, const Variant& monto) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return run(Command::Payment, {medio, implied(monto, 2), u"T"});
}

std::int16_t CZentaro::RegistrarDescuento(const Variant& ivmValorDescuento) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return run(Command::Payment, {empty, implied(ivmValorDescuento, 2), u"D"});
}

std::int16_t CZentaro::RegistrarDescuentoExt(const Variant& ivmValorDescuento, const Variant& Descripcion) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return run(Command::Payment, {firstCharacters(Descripcion, 20), implied(ivmValorDescuento, 2), u"D"});
}

std::int16_t CZentaro::CancelarComprobante() {
  if (!isPortOpen) return ENVERR_DEVICE;
  return run(Command::Payment, {empty, u"0", u"C"});
}

// No port check: the interface says so, here and below.
std::int16_t CZentaro::CerrarComprobante(const Variant& TipoCierre) {
  if (TipoCierre.is(Variant::Kind::Empty) || isText(TipoCierre, empty))
    return run(Command::CloseDocument, {});
  return run(Command::CloseDocument, {TipoCierre});
}

Variant CZentaro::CerrarComprobanteIGTF(Variant& TipoCierre, const Variant& baseIGTF) {
  // required: a base that does not convert leaves the type as it is.
  const double base = baseIGTF.is(Variant::Kind::Missing) ? 0 : toDouble(baseIGTF);
  adjustCloseType(TipoCierre, base != 0);
  run(Command::CloseDocument, {TipoCierre, FormatImplied(base, 2)});
  return static_cast<std::int32_t>(nEnvironmentError);
}

Variant CZentaro::CerrarComprobanteIGTF(const Variant& TipoCierre, const Variant& baseIGTF) {
  Variant type = TipoCierre;
  return CerrarComprobanteIGTF(type, baseIGTF);
}

}  // namespace zentaro
