// The POSIX implementation of each platform service: one object a service, made at its first use,
// living as long as the program.
#pragma once

#include <memory>
#include <optional>

#include "platform/lasting.h"
#include "platform/services.h"

namespace zentaro::posix {

SerialServices& serialServices();
SettingsStore& settingsFiles();
Clock& clock();
/// Another one, which starts now at this time of day in seconds; without one, at the system's.
std::unique_ptr<Clock> clockFrom(std::optional<double> start = {});
Files& files();
RegionalSettings& regionalSettings();

}  // namespace zentaro::posix
