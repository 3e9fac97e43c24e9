// The POSIX implementation of each platform service: one object a service, made at its first use,
// living as long as the program.
#pragma once

#include "platform/lasting.h"
#include "platform/services.h"

namespace zentaro::posix {

SerialServices& serialServices();
SettingsStore& settingsFiles();
Clock& clock();
Files& files();
RegionalSettings& regionalSettings();

}  // namespace zentaro::posix
