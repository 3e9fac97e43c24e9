// The texts are those that hosts show, in Spanish.
#include "printer/outcome.h"

#include "automation/conversions.h"

namespace zentaro {

std::u16string outcomeText(ENVERR_CODES outcome) {
  switch (outcome) {
    case ENVERR_DEVICE: return u"ERROR EN DISPOSITIVO";
    case ENVERR_OK: return u"OK";
    case ENVERR_COMM: return u"TIEMPO AGOTADO";
    case ENVERR_INVALID: return u"RESPUESTA INVALIDA";
    case ENVERR_CHECKSUM: return u"CHECKSUM  INVALIDA";  // required: two blanks
    case ENVERR_BADSEQ: return u"SECUENCIA INVALIDA";
    case ENVERR_STATUS: return u"PRINTER STATUS";
    case ENVERR_BADARG: return u"ARGUMENTOS INVALIDOS";
  }
  return u"envErrInvalido (" + toText(static_cast<std::int32_t>(outcome)) + u")";
}

}  // namespace zentaro
