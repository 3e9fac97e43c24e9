// A file that its owner alone may read.
#pragma once

#include <filesystem>

namespace zentaro::system {

/// Makes an empty one where there is none, mode 0600 whatever the umask. Raises std::system_error.
void makePrivate(const std::filesystem::path& file);

/// An administrator's file in the folder of another account becomes that account's. Does nothing for others.
void leaveToOwnerOfFolder(const std::filesystem::path& file);

}  // namespace zentaro::system
