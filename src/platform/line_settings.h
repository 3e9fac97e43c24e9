// The settings text of a line, such as "baud=9600 parity=N data=8 stop=1".
#pragma once

#include <string_view>

#include "platform/serial_services.h"

namespace zentaro {

/// Changes the named settings and switches flow control off. False, and `settings` unchanged, when
/// any part of the text is unknown or out of range.
bool parseLineSettings(std::string_view text, LineSettings& settings);

}  // namespace zentaro
