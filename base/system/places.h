// Where the files of our programs belong.
#pragma once

#include <filesystem>

namespace zentaro::system {

/// Of this account: $XDG_STATE_HOME/zentaro, else ~/.local/state/zentaro; on Windows %LOCALAPPDATA%\zentaro. A
/// relative $XDG_STATE_HOME counts as none. Raises std::runtime_error when the account has no home.
std::filesystem::path userStateFolder();

/// Of all accounts of the machine; whoever sets it up makes it.
std::filesystem::path machineStateFolder();

}  // namespace zentaro::system
