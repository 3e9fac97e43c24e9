// The texts of the outcome codes.
#include "printer/outcome.h"

#include <array>

#include "automation/conversions.h"

namespace zentaro {

namespace {

constexpr std::array<const char16_t*, 8> texts{
    u"ERROR EN DISPOSITIVO", u"OK",
    u"TIEMPO AGOTADO",       u"RESPUESTA INVALIDA",
    u"CHECKSUM  INVALIDA",  // required: two blanks
    u"SECUENCIA INVALIDA",   u"PRINTER STATUS",
    u"ARGUMENTOS INVALIDOS",
};

}  // namespace

std::u16string outcomeText(ENVERR_CODES outcome) {
  if (outcome >= ENVERR_DEVICE && outcome <= ENVERR_BADARG) {
    return texts[static_cast<std::size_t>(outcome - ENVERR_DEVICE)];
  }
  return u"envErrInvalido (" + toText(static_cast<std::int32_t>(outcome)) + u")";
}

}  // namespace zentaro
