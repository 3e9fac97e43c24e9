// Printing on a cheque in the slip station: its face and its endorsement.
#include "automation/automation_error.h"
#include "automation/masks.h"
#include "documents/encoding.h"
#include "printer/czentaro.h"

namespace zentaro {

template <class MakeFields>
std::int16_t CZentaro::printCheque(Command command, MakeFields makeFields) {
  if (const std::int16_t slip = ActivarSlip(); slip != ENVERR_OK) return slip;
  const Variant answer = exchange(command, makeFields());
  DesactivarSlip();
  vaResponse = answer;
  return outcome();  // required: that of the last exchange, not of the cheque
}

std::int16_t CZentaro::LlenarCheque(const Variant& vmMontoCheque, const Variant& strBeneficiario,
                                    const Variant& dtFechaEmision) {
  if (!isPortOpen) return ENVERR_DEVICE;
  const std::optional<Date> date = asDate(dtFechaEmision);
  if (!asNumber(vmMontoCheque) || !date) throw AutomationError(ErrorNumber::TypeMismatch);
  return printCheque(Command::ChequeFace, [&]() -> Fields {
    return {maskAmount(vmMontoCheque), CleanText(strBeneficiario, 40), maskShortDate(*date)};
  });
}

std::int16_t CZentaro::EndosarCheque(const Variant& strNombre, const Variant& strCedula,
                                     const Variant& strTelefono) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return printCheque(Command::ChequeEndorsement, [&]() -> Fields {
    return {CleanText(strNombre, 40), CleanText(strCedula, 20), CleanText(strTelefono, 20)};
  });
}

}  // namespace zentaro
