// Where the system keeps what the library reads: the settings file in force and the device behind a
// port's name.
#pragma once

#include <string>

#include "zentaro_api.h"

namespace zentaro {

/// The path of the settings file of the calling user, whether it exists or not. POSIX:
/// `$ZENTARO_SETTINGS`, else `$XDG_CONFIG_HOME/TRV/settings.ini`, else
/// `~/.config/TRV/settings.ini`; empty when the user has no home directory.
ZENTARO_API std::string settingsPath();

/// The calling user's folder for what programs leave behind, such as traces: `$XDG_STATE_HOME/zentaro`,
/// else `~/.local/state/zentaro`; empty when there is no home directory.
ZENTARO_API std::string stateFolder();

/// The path of the device that "COM3" stands for: the setting "COM3" of the section
/// "Config\ModComm", else the system's own third serial port. Any other name is taken as a path
/// when it holds a "/"; empty for one that does not.
ZENTARO_API std::string devicePath(const std::string& deviceName);

}  // namespace zentaro
