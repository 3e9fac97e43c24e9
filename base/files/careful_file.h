// Files that a person named: followed to what they lead to, read only when they are files, replaced as a
// whole. Every failure is a std::runtime_error that names the file and what is wrong with it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/files/descriptor.h"

namespace zentaro::base {

/// What a chain of links leads to, whether it is there or not: it is what is locked and replaced, not a link.
std::filesystem::path behindLinks(std::filesystem::path path);

/// The content; nothing when there is no file. A fifo, a device or a folder is refused at once, not waited for.
std::optional<std::string> contentOf(const std::filesystem::path& path);

/// A descriptor that appends to the file, which is made if there is none.
files::Descriptor openToAppend(const std::filesystem::path& path);

/// Replaces the content, keeping the permissions: a reader, or a restart after a kill, sees the old content or
/// the new, never a part. After a failure the old content stands, and nothing is left beside it; after a kill there
/// may be one file with ".new" behind its name, which the next replacement takes over.
void replaceFile(const std::filesystem::path& path, std::string_view content);

}  // namespace zentaro::base
