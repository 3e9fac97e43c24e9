// The members through which a host reads what the last transaction left. None of them talks to the printer.
#include <cmath>

#include "automation/conversions.h"
#include "printer/czentaro.h"
#include "util/lm_hex_str.h"

namespace zentaro {

namespace {

/// A fraction or a text that is a number counts as the nearest whole number, ties to even.
double wholeNumber(const Variant& value) { return std::nearbyint(toDouble(value)); }

}  // namespace

std::u16string CZentaro::EnvironmentError() const {
  return outcomeText(nEnvironmentError) + u"\r\n(PS:" + lmHexStr::HexStr(dwordPrinterStatus, 4) + u"H, EF:" +
         lmHexStr::HexStr(dwordStatusFiscal, 4) + u"H) \r\n" + sLastError + u".\r\nComando = " +
         lmHexStr::HexStr(nLastCommand, 2) + u"H";
}

Variant CZentaro::getResponse(const Variant& /*cmd*/) const { return vaResponse; }
Variant CZentaro::getVarParms(const Variant& /*n*/) const { return vaResponse; }

Variant CZentaro::response(const Variant& Index) const {
  const Array& fields = vaResponse.array();  // required: before the index is looked at
  const double index = wholeNumber(Index);
  if (!(index >= 0 && index <= fields.upperBound())) return static_cast<std::int16_t>(-1);
  return fields.at(static_cast<int>(index));
}

std::int16_t CZentaro::MaxResponse() const {
  const bool failed = vaResponse.is(Variant::Kind::Array) && vaResponse.array().upperBound() == 0;
  return failed ? 0 : -1;
}

std::int32_t CZentaro::BitPrinter(const Variant& nBit) { return BitTest(nBit, dwordPrinterStatus); }
std::int32_t CZentaro::BitFiscal(const Variant& nBit) { return BitTest(nBit, dwordStatusFiscal); }

std::int32_t CZentaro::BitTest(const Variant& nBit, std::int32_t word) {
  const double bit = wholeNumber(nBit);
  if (!(bit >= 0 && bit <= 15)) {
    nEnvironmentError = ENVERR_BADARG;
    return -1;
  }
  return word & (1 << static_cast<int>(bit));
}

}  // namespace zentaro
