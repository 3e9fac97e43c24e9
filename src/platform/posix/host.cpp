// The host of a POSIX system: no events to hand over, and a box is a line on standard error.
#include "platform/system_host.h"

namespace zentaro {

void yieldToSystem() {}

bool systemWantsYields() { return false; }

void systemErrorBox(std::u16string_view title, std::u16string_view text) { printErrorBox(title, text); }

}  // namespace zentaro
