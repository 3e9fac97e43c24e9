// A file that its owner alone may read.
#pragma once

#include <filesystem>
#include <string>

namespace zentaro::system {

/// Makes an empty one where there is none, mode 0600 whatever the umask. Raises std::system_error.
void makePrivate(const std::filesystem::path& file);

/// What a file that was changed or replaced cannot share with the one before; empty for none.
std::string lookOf(const std::filesystem::path& file);

/// An administrator's file in the folder of another account becomes that account's. Does nothing for others.
void leaveToOwnerOfFolder(const std::filesystem::path& file);

}  // namespace zentaro::system
