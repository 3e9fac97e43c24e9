// The driver trace: what the driver reads and writes on any port of the thread, in a text file. Two
// settings of the section "Config\ModComm" control it, "DEBUG" (on unless "0") and "DumpFile" (its
// path).
#pragma once

#include <string>

#include "zentaro_api.h"

namespace zentaro::modCOMM {

/// Reads the settings and starts the trace, or stops it when they do not ask for one. A file that
/// cannot be opened is shown in a message box, and the trace is off.
ZENTARO_API void CommTraceStart();
void CommTraceStop();

// Each does nothing while the trace is off and raises the file error of a write that fails.
void CommTraceRead(const std::u16string& data);
void CommTraceSend(const std::u16string& data);
void CommTraceDump(const std::u16string& data);

}  // namespace zentaro::modCOMM
