// What is wrong with a user's settings.
#pragma once

#include "tools/doctor/finding.h"
#include "tools/settings/settings_file.h"

namespace zentaro::tools {

/// Names that nobody reads, values that are no numbers or out of range, lines that cannot be read, and one device
/// behind two ports.
void judgeSettings(const SettingsText& settings, Findings& findings);

/// On Windows: for which programs the automation server is registered, and which ones would get the error 429.
void judgeRegistration(Findings& findings);

}  // namespace zentaro::tools
