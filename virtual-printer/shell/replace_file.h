// Replacing a file as a whole: a reader, or a restart after a kill, sees the old content or the new, never a
// part.
#pragma once

#include <filesystem>
#include <string>

namespace printer {

// Throws std::system_error that names the file; the old content then stands unchanged.
void replaceFile(const std::filesystem::path& path, const std::string& content);

}  // namespace printer
