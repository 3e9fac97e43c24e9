// The files of web/page, which the build puts into the program.
#pragma once

#include <span>
#include <string_view>

namespace virtual_printer {

struct PageFile {
  std::string_view path;  // of the URL
  std::string_view type;
  std::string_view content;
};

std::span<const PageFile> pageFiles();

// Stands in index.html for the token that lets the page act.
inline constexpr std::string_view tokenMark = "@TOKEN@";

}  // namespace virtual_printer
