// The fiscal closing that RealizarCierre prints.
#pragma once

#include <cstdint>

namespace zentaro {

enum nTipoCierreFiscal : std::int32_t { CIERRE_X = 0, CIERRE_Z = 1 };

}  // namespace zentaro
