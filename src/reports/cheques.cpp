// Printing on a cheque in the slip station: its face and its endorsement.
#include <utility>

#include "automation/automation_error.h"
#include "automation/masks.h"
#include "documents/encoding.h"
#include "printer/czentaro.h"

namespace zentaro {

std::int16_t CZentaro::LlenarCheque(const Variant& vmMontoCheque, const Variant& strBeneficiario,
                                    const Variant& dtFechaEmision) {
  if (!isPortOpen) return ENVERR_DEVICE;
  const std::optional<Date> date = asDate(dtFechaEmision);
  if (!asNumber(vmMontoCheque) || !date) throw AutomationError(ErrorNumber::TypeMismatch);
  if (const std::int16_t slip = ActivarSlip(); slip != ENVERR_OK) return slip;
  return endCheque(Command::ChequeFace,
                   {maskAmount(vmMontoCheque), CleanText(strBeneficiario, 40), maskShortDate(*date)});
}

std::int16_t CZentaro::EndosarCheque(const Variant& strNombre, const Variant& strCedula,
                                     const Variant& strTelefono) {
  if (!isPortOpen) return ENVERR_DEVICE;
  if (const std::int16_t slip = ActivarSlip(); slip != ENVERR_OK) return slip;
  return endCheque(Command::ChequeEndorsement,
                   {CleanText(strNombre, 40), CleanText(strCedula, 20), CleanText(strTelefono, 20)});
}

std::int16_t CZentaro::endCheque(Command command, Fields fields) {
  Variant answer = exchange(command, std::move(fields));
  DesactivarSlip();
  return keep(std::move(answer));  // required: the outcome is that of the last exchange, not of the cheque
}

}  // namespace zentaro
