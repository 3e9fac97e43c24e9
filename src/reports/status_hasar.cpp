// Loading the numeric status.
#include "reports/status_hasar.h"

#include <array>

#include "automation/conversions.h"
#include "automation/numbers.h"

namespace zentaro {

void statusHASAR::LoadFromResponse(const Variant& response) {
  constexpr std::array counters{&statusHASAR::statusAuxiliar,      &statusHASAR::statusDocumento,
                                &statusHASAR::numeroUltimaFactura, &statusHASAR::numeroUltimaND,
                                &statusHASAR::numeroUltimaNC,      &statusHASAR::numeroUltimoDNF};
  const Array& elements = response.array();
  statusPrinter = leadingSignedHex(toText(elements.at(0)));
  statusFiscal = leadingSignedHex(toText(elements.at(1)));
  int element = 2;
  for (const auto counter : counters)
    this->*counter = roundToInt32(leadingNumber(toText(elements.at(element++))));
}

}  // namespace zentaro
