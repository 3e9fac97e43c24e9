// Loading and reading the normal status.
#include "reports/status_n.h"

#include <array>

#include "automation/conversions.h"
#include "util/general.h"

namespace zentaro {

void statusN::LoadFromResponse(const Variant& response) {
  constexpr int firstElement = 4;
  constexpr std::array fields{&statusN::CodigoStatus,
                              &statusN::UltimoComando,
                              &statusN::sFecha,
                              &statusN::sHora,
                              &statusN::sFacturasPeriodo,
                              &statusN::sDNFPeriodo,
                              &statusN::sNumeroFacturaAcumulado,
                              &statusN::sNumeroDNFAcumulado,
                              &statusN::sUltimoCierreZ};
  const Array& elements = response.array();
  int element = firstElement;
  for (const auto field : fields) this->*field = toText(elements.at(element++));
}

Date statusN::FechaImpresora() const { return General::MakeDateTime(sFecha, sHora); }

std::int32_t statusN::FacturasPeriodo() const { return toInt32(sFacturasPeriodo); }
std::int32_t statusN::DNFPeriodo() const { return toInt32(sDNFPeriodo); }
std::int32_t statusN::NumeroFacturaAcumulado() const { return toInt32(sNumeroFacturaAcumulado); }
std::int32_t statusN::NumeroDNFAcumulado() const { return toInt32(sNumeroDNFAcumulado); }
std::int32_t statusN::UltimoCierreZ() const { return toInt32(sUltimoCierreZ); }

}  // namespace zentaro
