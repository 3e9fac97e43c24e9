// The Windows implementation of each platform service: one object a service, made at its first use, living as
// long as the program.
#pragma once

#include "platform/lasting.h"
#include "platform/services.h"

namespace zentaro::windows {

SerialServices& serialServices();
SettingsStore& registrySettings();
Clock& clock();
Files& files();
RegionalSettings& regionalSettings();
const CodePage& ansiCodePage();

}  // namespace zentaro::windows
