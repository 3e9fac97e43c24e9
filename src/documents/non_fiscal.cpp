// Non-fiscal documents, and the header and footer lines of the fiscal ones.
#include "automation/conversions.h"
#include "automation/numbers.h"
#include "documents/encoding.h"
#include "printer/czentaro.h"

namespace zentaro {

namespace {

constexpr std::int32_t lineLength = 40;

}  // namespace

std::int16_t CZentaro::AbrirDNF() { return runCommand(Command::OpenNonFiscal); }

std::int16_t CZentaro::PasarLineaDNF(const Variant& istrTexto) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return run(Command::NonFiscalLine, {CleanText(istrTexto, lineLength)});
}

std::int16_t CZentaro::CerrarDNF() { return runCommand(Command::CloseNonFiscal); }

std::int16_t CZentaro::SetTextoFormato(const Variant& bEncabezado, const Variant& nLinea,
                                       const Variant& sTextoLinea) {
  if (!isPortOpen) return ENVERR_DEVICE;
  const std::optional<double> line = asNumber(nLinea);
  if (!line || !(*line >= 1 && *line <= 5)) return ENVERR_BADARG;  // required: only returned
  const Command command = toBoolean(bEncabezado) ? Command::HeaderLine : Command::FooterLine;
  return run(command, {numberText(*line, u'.'), CleanText(sTextoLinea, lineLength)});
}

}  // namespace zentaro
