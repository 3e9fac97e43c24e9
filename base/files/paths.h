// Paths from text and back. A path that is made of a std::string directly would be another one on Windows where the
// name has more than ASCII.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zentaro::files {

inline std::filesystem::path pathOf(std::string_view utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

inline std::string textOf(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace zentaro::files
