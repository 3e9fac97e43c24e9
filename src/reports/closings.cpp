// X and Z closings, reports of the fiscal memory, and the figures of a closing as a record.
#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "automation/masks.h"
#include "documents/encoding.h"
#include "printer/czentaro.h"
#include "reports/resultado_cierre.h"

namespace zentaro {

namespace {

/// Unlike elsewhere, Empty and Null are no values here.
template <class Value>
Value valueOrMismatch(std::optional<Value> value) {
  if (!value) throw AutomationError(ErrorNumber::TypeMismatch);
  return *value;
}

std::u16string reportDate(const Variant& value) { return maskDate(valueOrMismatch(asDate(value))); }
std::u16string reportNumber(const Variant& value) {
  valueOrMismatch(asNumber(value));
  return maskWholeNumber8(value);  // of the value itself: a double does not have all digits of a currency
}

}  // namespace

std::int16_t CZentaro::RealizarCierre(nTipoCierreFiscal nTipo, const Variant& Imprimir) {
  if (!isPortOpen) return ENVERR_DEVICE;
  if (nTipo != CIERRE_X) return run(Command::Closing, {u"Z"});
  return run(Command::Closing, {u"X", toBoolean(Imprimir) ? u"P" : u"S"});
}

std::int16_t CZentaro::CierreZ() {
  if (!isPortOpen) return ENVERR_DEVICE;
  return run(Command::Closing, {u"Z", u"T"});
}

std::int16_t CZentaro::ReporteMemoriaPorFecha(const Variant& dtInicial, const Variant& dtFinal,
                                              const Variant& sTipoReporte) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return run(Command::MemoryReport, {reportDate(dtInicial), reportDate(dtFinal), sTipoReporte});
}

std::int16_t CZentaro::ReporteMemoriaPorNumero(const Variant& lngInicial, const Variant& lngFinal,
                                               const Variant& sTipoReporte) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return run(Command::MemoryReport, {reportNumber(lngInicial), reportNumber(lngFinal), sTipoReporte});
}

std::unique_ptr<ResultadoCierre> CZentaro::PerformReturnCierre(nTipoCierreFiscal TipoCierre) {
  if (RealizarCierre(TipoCierre, true) != ENVERR_OK) return nullptr;
  auto record = std::make_unique<ResultadoCierre>();
  record->LoadFromParams(vaResponse);
  return record;
}

std::unique_ptr<ResultadoCierre> CZentaro::GetResultadoCierre() const {
  auto record = std::make_unique<ResultadoCierre>();
  try {
    record->LoadFromParams(vaResponse);
  } catch (const AutomationError&) {
    return nullptr;
  }
  return record;
}

}  // namespace zentaro
