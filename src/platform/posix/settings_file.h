// Settings in files: each is read again for every value, so that a change is seen at once.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/system_paths.h"

namespace zentaro::posix {

/// The value in the first of the files that has the key. A file that cannot be read has none.
std::optional<std::string> firstValue(const std::vector<std::string>& paths, std::string_view section,
                                      std::string_view key);

/// The first of the files that is there and cannot be read.
std::optional<UnreadableFile> firstUnreadable(const std::vector<std::string>& paths);

}  // namespace zentaro::posix
