// The host as the system knows it, for a thread whose program has installed no callbacks; each system defines
// the three functions.
#pragma once

#include <string_view>

#include "platform/host.h"

namespace zentaro {

/// Hands the thread's pending events to the program once, where the system has such a thing.
void yieldToSystem();
/// True when events can come for this thread, so that a wait must not sleep long.
bool systemWantsYields();
/// Shows the system's own error box, or says the same where nobody would see one.
void systemErrorBox(std::u16string_view title, std::u16string_view text);

/// The host application by its thread's callbacks, else by the functions above.
Host& callbackHost();

/// Writes the box as one line on standard error: line ends, alone or in a row, become one blank.
void printErrorBox(std::u16string_view title, std::u16string_view text);

}  // namespace zentaro
