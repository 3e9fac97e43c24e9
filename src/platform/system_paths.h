// Where the system keeps what the library reads: the settings files in force and the device behind
// a port's name.
#pragma once

#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "zentaro_api.h"

namespace zentaro {

/// The path of the settings file of the calling user, whether it exists or not. POSIX:
/// `$ZENTARO_SETTINGS`, else `$XDG_CONFIG_HOME/TRV/settings.ini`, else
/// `~/.config/TRV/settings.ini`; empty when the user has no home directory. On Windows the key of the registry.
ZENTARO_API std::string settingsPath();

/// The path of the settings file for all users of the machine: /etc/xdg/TRV/settings.ini on POSIX,
/// empty on Windows.
ZENTARO_API std::string systemSettingsPath();

/// The settings files in force, whether they exist or not. A key has its value from the first one
/// that has the key: the user's file, then the machine's; `$ZENTARO_SETTINGS` stands alone.
ZENTARO_API std::vector<std::string> settingsPaths();

struct UnreadableFile {
  std::string path;
  std::error_code reason;
};
/// The first of the settings files that is there and cannot be read, as for want of a right. The
/// settings store takes it for absent.
ZENTARO_API std::optional<UnreadableFile> unreadableSettings();

/// The calling user's folder for what programs leave behind, such as traces: `$XDG_STATE_HOME/zentaro`,
/// else `~/.local/state/zentaro`; empty when there is no home directory. A variable that holds no
/// absolute path counts as not set.
ZENTARO_API std::string stateFolder();

/// The system's own serial port of that number: "/dev/ttyS2", "COM3".
ZENTARO_API std::string ownDevice(int port);

/// The device that "COM3" stands for: the setting "COM3" of the section "Config\ModComm", else the system's own
/// third serial port. Any other name is a device itself: on POSIX when it holds a "/", and empty for one that
/// does not. A device "tcp://host:port" is a line over TCP.
ZENTARO_API std::string devicePath(const std::string& deviceName);

}  // namespace zentaro
